/* Tables of any texts, drawn with a record of any numbers. */
#include "core/actions.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/rowed_info.h"
#include "gfx/utf8.h"
#include "gfx/widget.h"
#include "lang/language.h"

#include <algorithm>
#include <climits>

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    const int font = in.number(1, 3), count = in.number(0, 20), parts = in.number(0, 3);
    WidgetState state = {};
    state.current = in.number(INT_MIN, INT_MAX);
    int actions[4];
    for (int &action : actions)
        action = in.number(ACTION_ENTER, ACTION_NONE);
    const std::vector<char> title = exact(in.text()), bottom = exact(in.text());
    std::vector<InfoRow> rows(static_cast<size_t>(count) + 1);
    for (int i = 0; i < count; i++) {
        InfoRow &row = rows[static_cast<size_t>(i)];
        copy_cut(row.label, in.text().c_str());
        copy_cut(row.value, in.text().c_str());
        copy_cut(row.prefix, in.text().c_str());
    }
    for (const int action : actions) {
        drawRowedInfo(font, parts & 1 ? title.data() : nullptr, parts & 2 ? bottom.data() : nullptr, rows.data(),
                      &state, action);
        if (font == 1 && *rows[0].label)
            require(state.current >= 0 && state.current < std::max(count, 1),
                    "the first row shown is one of the table");
    }
}
