/* Lists of any texts, drawn with a record of any numbers. */
#include "gfx/list.h"
#include "core/actions.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/widget.h"
#include "lang/language.h"

#include <climits>

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    const int font = in.number(1, 3), count = in.number(0, MAX_LIST_ITEMS), parts = in.number(0, 3);
    WidgetState state = {};
    for (int32_t *field : {&state.current, &state.cursorRow, &state.pendingSelection})
        *field = in.number(0, 1) ? in.number(INT_MIN, INT_MAX) : in.number(0, MAX_LIST_ITEMS);
    state.drawnMask = static_cast<uint16_t>(in.number(0, UINT16_MAX));
    int actions[4];
    for (int &action : actions)
        action = in.number(ACTION_ENTER, ACTION_NONE);
    const std::vector<char> title = exact(in.text()), bottom = exact(in.text());
    std::vector<std::vector<char>> texts;
    for (int i = 0; i < count; i++)
        texts.push_back(exact(in.text()));
    std::vector<const char *> items;
    for (const std::vector<char> &text : texts)
        items.push_back(text.data());
    items.push_back(nullptr);

    for (const int action : actions) {
        drawSelect(font, parts & 1 ? title.data() : nullptr, parts & 2 ? bottom.data() : nullptr, items.data(), &state,
                   action);
        /* Without room for one row, nothing is applied. */
        if (count == 0 || font != 1)
            continue;
        require(state.current >= 0 && state.current < count, "the selected item is one of the list");
        require(state.cursorRow >= 0 && state.cursorRow <= state.current, "the view begins within the list");
        require(action != ACTION_ENTER || state.pendingSelection == 0, "a stored selection is used once");
    }
}
