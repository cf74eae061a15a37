/* Pages of any text, which may change under its layout, drawn with a record of any numbers. */
#include "core/actions.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/info.h"
#include "gfx/widget.h"
#include "lang/language.h"

#include <algorithm>
#include <climits>

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    const int font = in.number(1, 3), parts = in.number(0, 3);
    WidgetState state = {};
    state.current = in.number(INT_MIN, INT_MAX);
    state.lineCount = in.number(0, 1) ? in.number(INT_MIN, INT_MAX) : in.number(0, MAX_PAGE_LINES);
    for (int i = 0; i < 4; i++)
        state.lineStart[i] = in.number(INT_MIN, INT_MAX);
    int actions[4];
    for (int &action : actions)
        action = in.number(ACTION_ENTER, ACTION_NONE);
    const std::vector<char> title = exact(in.text()), bottom = exact(in.text());
    const std::vector<char> other = exact(in.text()), text = exact(in.rest());

    for (int i = 0; i < 4; i++) {
        const std::vector<char> &shown = i == 2 ? other : text;
        drawInfo(font, parts & 1 ? title.data() : nullptr, parts & 2 ? bottom.data() : nullptr, shown.data(), &state,
                 actions[i]);
        /* Without room for one row, nothing is laid out. */
        if (font != 1)
            continue;
        require(state.lineCount >= 0 && state.lineCount <= MAX_PAGE_LINES, "a layout has room in its record");
        require(state.current >= 0 && state.current <= std::max(0, state.lineCount - 1), "the page shown is one");
        if (actions[i] != ACTION_ENTER)
            continue;
        require(std::is_sorted(state.lineStart, state.lineStart + state.lineCount), "lines follow one another");
        for (int line = 0; line < state.lineCount; line++)
            require(state.lineStart[line] >= 0 && state.lineStart[line] < static_cast<int>(shown.size()),
                    "a line begins within its text");
    }
}
