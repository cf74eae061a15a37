#include "gfx/list.h"

#include "core/actions.h"
#include "gfx/widget.h"
#include "tests/gfx/drawn_text.h"

#include <vector>

using Items = std::vector<const char *>;

/* Items "A", "B", ... */
static Items letters(size_t count)
{
    Items items = {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K",
                   "L", "M", "N", "O", "P", "Q", "R", "S", "T", "U"};
    items.resize(count);
    items.push_back(nullptr);
    return items;
}

/* The rows of a list after `action`: room for three. */
static std::string view(const Items &items, WidgetState *state, int action, int to = 117)
{
    clearScreenBuffer();
    EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", items.data(), state, action); }), "");
    return read_rows(to);
}

TEST(List, KeysMoveTheSelectionThroughTheView)
{
    const std::pair<int, const char *> steps[] = {
        {ACTION_ENTER, "[A]|B|C"}, {ACTION_UP, "[A]|B|C"},   {ACTION_DOWN, "A|[B]|C"}, {ACTION_DOWN, "A|B|[C]"},
        {ACTION_DOWN, "B|C|[D]"},  {ACTION_DOWN, "B|C|[D]"}, {ACTION_UP, "B|[C]|D"},   {ACTION_TICK, "B|[C]|D"},
        {ACTION_UP, "[B]|C|D"},    {ACTION_UP, "[A]|B|C"},   {ACTION_DOWN, "A|[B]|C"}, {ACTION_ENTER, "[A]|B|C"},
    };
    const GlyphRoot root;
    WidgetState state = {};
    for (const auto &step : steps)
        EXPECT_EQ(view(letters(4), &state, step.first), step.second) << "at " << &step - steps;
    state.current = 4;
    state.cursorRow = 1;
    EXPECT_EQ(view(letters(5), &state, ACTION_TICK), "[A]|B|C") << "the list has shrunk: the view ends behind it";
}

TEST(List, EnteringRestoresTheStoredSelection)
{
    const struct {
        size_t count; // of which twenty are shown
        int cursor_row, stored;
        const char *view;
    } cases[] = {
        {5, 0, 1, "A|[B]|C"}, {5, 0, 3, "C|[D]|E"}, {5, 0, 4, "C|D|[E]"}, {5, 2, 2, "A|B|[C]"},   {5, 9, 1, "A|[B]|C"},
        {9, 5, 6, "[G]|H|I"}, {2, 0, 1, "A|[B]|"},  {5, 2, 5, "[A]|B|C"}, {21, 0, 19, "R|S|[T]"},
    };
    const GlyphRoot root;
    for (const auto &test : cases) {
        WidgetState state = {};
        state.cursorRow = test.cursor_row;
        setSelectedItemId(&state, test.stored);
        EXPECT_EQ(view(letters(test.count), &state, ACTION_ENTER), test.view) << "at " << &test - cases;
        view(letters(test.count), &state, ACTION_ENTER);
        EXPECT_EQ(getSelectedItemId(&state), 0) << "a stored selection holds once";
    }
}

/* Rows are 16 pixels high, and the box takes the row of pixels above the glyphs in. */
TEST(List, WideLanguagesHaveALayoutOfTheirOwn)
{
    const GlyphRoot root;
    root.use_language(7);
    WidgetState state = {};
    view(letters(3), &state, ACTION_ENTER);
    EXPECT_EQ(read_line(47, 1, 117) + read_line(31, 1, 117), "[A]B");
    for (int y = 0; y < LCD_HEIGHT - 13; y++)
        EXPECT_EQ(getDot(0, y), y == 49 || y == 13 || (y >= 35 && y <= 47)) << y;
    EXPECT_EQ(read_line(12, 53), "keys");
}

TEST(List, LongItemsScrollWhileTheyAreShown)
{
    const char *item = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    Items items = {item, item, item, item, nullptr};
    const std::pair<int, const char *> steps[] = {
        {ACTION_ENTER, "[A]|A|A"}, {ACTION_TICK, "[B]|B|B"}, {ACTION_DOWN, "C|[C]|C"},
        {ACTION_DOWN, "D|D|[D]"},  {ACTION_DOWN, "E|E|[A]"},
    };
    const GlyphRoot root;
    WidgetState state = {};
    for (const auto &[action, shown] : steps)
        EXPECT_EQ(view(items, &state, action, 7), shown) << "an item that comes into view begins at its start";
    items.insert(items.begin(), 16, item);
    setSelectedItemId(&state, 16);
    view(items, &state, ACTION_ENTER);
    EXPECT_EQ(view(items, &state, ACTION_TICK, 7), "B|B|[A]") << "items from 16 on are not remembered";
}
