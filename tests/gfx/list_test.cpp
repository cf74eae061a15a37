#include "gfx/list.h"

#include "core/actions.h"
#include "tests/gfx/widget_screen.h"

/* Items "A", "B", ... */
static std::vector<const char *> letters(int count)
{
    static std::array<char[2], 26> names;
    std::vector<const char *> items;
    for (int i = 0; i < count; i++) {
        names[i][0] = static_cast<char>('A' + i);
        items.push_back(names[i]);
    }
    items.push_back(nullptr);
    return items;
}

class ListTest : public WidgetTest
{
protected:
    /* The rows of a list with title and bottom line after `action`: room for three. */
    std::string view(const std::vector<const char *> &items, int action)
    {
        clearScreenBuffer();
        EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", items.data(), &state, action); }), "");
        return read_line(49, 1, 117) + read_line(37, 1, 117) + read_line(25, 1, 117);
    }

    WidgetState state = {};
};

TEST_F(ListTest, KeysMoveTheSelectionThroughTheView)
{
    const struct {
        int action;
        const char *view;
    } steps[] = {
        {ACTION_ENTER, "[A]BC"}, {ACTION_UP, "[A]BC"},   {ACTION_DOWN, "A[B]C"},  {ACTION_DOWN, "AB[C]"},
        {ACTION_DOWN, "BC[D]"},  {ACTION_DOWN, "CD[E]"}, {ACTION_DOWN, "CD[E]"},  {ACTION_UP, "C[D]E"},
        {ACTION_TICK, "C[D]E"},  {ACTION_UP, "[C]DE"},   {ACTION_UP, "[B]CD"},    {ACTION_LEFT, "[B]CD"},
        {ACTION_UP, "[A]BC"},    {ACTION_DOWN, "A[B]C"}, {ACTION_ENTER, "[A]BC"},
    };
    for (const auto &step : steps) {
        EXPECT_EQ(view(letters(5), step.action), step.view) << "at " << &step - steps;
        EXPECT_EQ(thumb_offset(), (std::array{0, 5, 10, 15, 21}[getSelectedItemId(&state)])) << "at " << &step - steps;
    }
}

TEST_F(ListTest, EnteringRestoresTheStoredSelection)
{
    const struct {
        int count, cursor_row, stored;
        const char *view;
    } cases[] = {
        {5, 0, 0, "[A]BC"}, {5, 0, 1, "A[B]C"}, {5, 0, 2, "B[C]D"},      {5, 0, 3, "C[D]E"},   {5, 0, 4, "CD[E]"},
        {5, 2, 4, "CD[E]"}, {5, 2, 2, "AB[C]"}, {5, 2, 1, "A[B]C"},      {5, 9, 1, "A[B]C"},   {5, -9, 2, "B[C]D"},
        {5, 2, 0, "[A]BC"}, {5, 0, 5, "[A]BC"}, {5, 2, -1, "[A]BC"},     {3, 0, 2, "AB[C]"},   {3, 2, 1, "A[B]C"},
        {9, 5, 6, "[G]HI"}, {2, 0, 1, "A[B]"},  {2, 0, INT_MAX, "[A]B"}, {24, 0, 19, "RS[T]"}, {24, 0, 20, "[A]BC"},
    };
    for (const auto &test : cases) {
        state = {};
        state.current = 3;
        state.cursorRow = test.cursor_row;
        setSelectedItemId(&state, test.stored);
        EXPECT_EQ(view(letters(test.count), ACTION_ENTER), test.view) << "at " << &test - cases;
        view(letters(test.count), ACTION_ENTER);
        EXPECT_EQ(getSelectedItemId(&state), 0) << "a stored selection holds once";
    }
    EXPECT_EQ(getSelectedItemId(nullptr), 0);
    setSelectedItemId(nullptr, 1);
}

TEST_F(ListTest, AListThatShrinksKeepsItsViewInside)
{
    for (const int count : {1, 2, 3, 4, 5, 6}) {
        setSelectedItemId(&state, 5);
        view(letters(7), ACTION_ENTER);
        const std::string shown = view(letters(count), ACTION_TICK);
        EXPECT_NE(shown.find('['), std::string::npos) << shown;
        EXPECT_LT(getSelectedItemId(&state), count);
    }
}

/* Drawn pixels from (x, y) on, to the right or downwards. */
static int run_length(int x, int y, int dx, int dy)
{
    int length = 0;
    while (x < LCD_WIDTH && y >= 0 && getDot(x, y)) {
        length++;
        x += dx;
        y -= dy;
    }
    return length;
}

TEST_F(ListTest, FrameBoxAndBarHaveTheirPlaces)
{
    const struct {
        int language;
        const char *title, *bottom_line;
        int count;
        const char *title_line;       // as read from the screen
        std::vector<int> rules, rows; // rows of pixels and top edges
        int box_top, box_height, box_width, bar_height;
    } cases[] = {
        {0, "Menu", "keys", 3, "Menu", {50, 11}, {49, 37, 25}, 48, 12, 128, 12},
        {0, "Menu", "keys", 4, "Menu~\x12+OK", {50, 11}, {49, 37, 25}, 48, 12, 118, 36},
        {0, "Menu\tOn", "keys", 4, "Menu~On", {50, 11}, {49, 37, 25}, 48, 12, 118, 36},
        {0, "Menu\t", nullptr, 5, "Menu", {50}, {49, 37, 25, 13}, 48, 12, 118, 49},
        {0, nullptr, nullptr, 5, "[A]", {}, {63, 51, 39, 27, 15}, 62, 12, 128, 12},
        {0, nullptr, "keys", 4, "[A]", {11}, {63, 51, 39, 27}, 62, 12, 128, 12},
        {8, "Menu", "keys", 2, "Menu", {49, 13}, {47, 31}, 47, 13, 128, 12},
        {7, "Menu", "keys", 3, "Menu~\x12+OK", {49, 13}, {47, 31}, 47, 13, 118, 32},
        {6, "Menu", nullptr, 3, "Menu", {49}, {47, 31, 15}, 47, 13, 128, 12},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(&test - cases);
        use_language(test.language);
        clearScreenBuffer();
        state = {};
        const auto items = letters(test.count);
        const auto draw = [&] { drawSelect(1, test.title, test.bottom_line, items.data(), &state, ACTION_ENTER); };
        EXPECT_EQ(printed(draw), "");
        EXPECT_EQ(read_line(63, test.title ? 0 : 1), test.title_line);
        for (const int y : test.rules)
            EXPECT_EQ(run_length(0, y, 1, 0), LCD_WIDTH) << y;
        EXPECT_EQ(read_line(test.rows[0], 1, 117), "[A]");
        for (size_t i = 1; i < test.rows.size(); i++)
            EXPECT_EQ(read_line(test.rows[i], 1, 117), items[i]);
        EXPECT_EQ(run_length(0, test.box_top + 1, 0, 1), 0);
        EXPECT_EQ(run_length(0, test.box_top, 0, 1), test.box_height);
        EXPECT_EQ(run_length(0, test.box_top - test.box_height + 1, 1, 0), test.box_width);
        /* Without a bar, the box reaches across its place. */
        EXPECT_EQ(run_length(119, test.rows[0] - 1, 0, 1), test.bar_height);
    }
}

TEST_F(ListTest, FrameTextsScrollByThemselves)
{
    const std::string wide = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const struct {
        std::string title, bottom_line;
        const char *entered_title, *entered_bottom_line; // as read from the screen
        const char *later_title, *later_bottom_line;     // two ticks later
    } cases[] = {
        {wide + "\tOn", "keys", "ABCDEFGHIJKLMNOPQR~On", "keys", "CDEFGHIJKLMNOPQRST~On", "keys"},
        {"-\t" + wide, "keys", "ABCDEFGHIJKLMNOPQRS", "keys", "CDEFGHIJKLMNOPQRSTU", "keys"},
        {"AB\tabcdefghijklmnopqrs", "keys", "A~abcdefghijklmnopqrs", "keys", "B~abcdefghijklmnopqrs", "keys"},
        {"Menu", wide, "Menu", "ABCDEFGHIJKLMNOPQRSTU", "Menu", "CDEFGHIJKLMNOPQRSTUVW"},
    };
    for (const auto &test : cases) {
        const auto draw = [&](int action) {
            clearScreenBuffer();
            drawSelect(1, test.title.c_str(), test.bottom_line.c_str(), nullptr, &state, action);
        };
        draw(ACTION_ENTER);
        EXPECT_EQ(read_line(63, 0), test.entered_title);
        EXPECT_EQ(read_line(11, test.bottom_line == wide ? 2 : 53), test.entered_bottom_line) << "centred";
        draw(ACTION_TICK);
        draw(ACTION_TICK);
        EXPECT_EQ(read_line(63, 0), test.later_title);
        EXPECT_EQ(read_line(11, 0), test.later_bottom_line);
    }
}

TEST_F(ListTest, LastRowNeedsNoGapBelow)
{
    use_language(8);
    write_glyph('A', 5, 13);
    drawSelect(1, "Menu", "keys", letters(2).data(), &state, ACTION_ENTER);
    EXPECT_EQ(read_line(47 - 17, 1), "B");
}

TEST_F(ListTest, TwentyItemsAreShown)
{
    for (int i = 0; i < 30; i++)
        view(letters(26), ACTION_DOWN);
    EXPECT_EQ(view(letters(26), ACTION_TICK), "RS[T]");
}

TEST_F(ListTest, LongItemsScrollWhileTheyAreShown)
{
    const std::string item = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::vector<const char *> four(4, item.c_str());
    std::vector<const char *> items = four;
    items.push_back(nullptr);
    const auto starts = [&](int action) {
        clearScreenBuffer();
        drawSelect(1, "Menu", "keys", items.data(), &state, action);
        std::string firsts;
        for (const int y : {49, 37, 25})
            firsts += read_line(y, 1, 6);
        return firsts;
    };
    EXPECT_EQ(starts(ACTION_ENTER), "[A]AA");
    EXPECT_EQ(starts(ACTION_TICK), "[B]BB");
    EXPECT_EQ(starts(ACTION_DOWN), "C[C]C");
    EXPECT_EQ(starts(ACTION_DOWN), "DD[D]");
    EXPECT_EQ(starts(ACTION_DOWN), "EE[A]") << "the item that came into view begins at its start";
    EXPECT_EQ(starts(ACTION_TICK), "FF[B]");

    items.assign(20, item.c_str());
    items.push_back(nullptr);
    state = {};
    setSelectedItemId(&state, 16);
    EXPECT_EQ(starts(ACTION_ENTER), "A[A]A");
    EXPECT_EQ(starts(ACTION_TICK), "B[A]A") << "items from 16 on are not remembered";
}

TEST_F(ListTest, RefusesWithoutStateOrRoom)
{
    const auto items = letters(2);
    EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", items.data(), nullptr, 0); }), "drawSelect return\n");
    EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", nullptr, &state, 0); }), "");
    EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", letters(0).data(), &state, 0); }), "");
    for (const int height : {0, 37}) {
        write_glyph('A', 5, height);
        EXPECT_EQ(printed([&] { drawSelect(1, "Menu", "keys", items.data(), &state, 0); }), "drawSelect return\n");
    }
}

TEST_F(ListTest, GarbageInTheRecordIsHarmless)
{
    std::mt19937 random(2);
    for (int round = 0; round < 300; round++) {
        const int count = 1 + static_cast<int>(random() % 26);
        state = garbage(random);
        const std::string shown = view(letters(count), static_cast<int>(random() % 10));
        ASSERT_EQ(std::count(shown.begin(), shown.end(), '['), 1) << shown;
        ASSERT_LT(getSelectedItemId(&state), std::min(count, MAX_LIST_ITEMS));
    }
}

TEST_F(ListTest, ScrollBarShowsThePosition)
{
    const struct {
        int height, length, total, position, offset, thumb;
    } cases[] = {
        {40, 1, 5, 1, 0, 6},  {40, 1, 5, 3, 12, 6},   {40, 1, 5, 5, 24, 6},   {40, 1, 7, 6, 21, 4},
        {40, 1, 7, 7, 26, 4}, {40, 1, 60, 59, 29, 1}, {40, 1, 60, 60, 29, 1}, {40, 2, 5, 2, 12, 12},
        {11, 1, 1, 1, 0, 1},  {64, 3, 4, 1, 0, 40},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(&test - cases);
        clearScreenBuffer();
        drawScrollBar(119, 63, test.height, test.length, test.total, test.position);
        std::string expected = "#########\n#.......#\n#...#...#\n#..###..#\n#.......#\n";
        for (int i = 0; i < test.height - 10; i++)
            expected += i >= test.offset && i < test.offset + test.thumb ? "#..###..#\n" : "#.......#\n";
        expected += "#.......#\n#..###..#\n#...#...#\n#.......#\n#########\n";
        std::string bar;
        for (int y = 63; y > 63 - test.height; y--) {
            for (int x = 119; x < 128; x++)
                bar += getDot(x, y) ? '#' : '.';
            bar += '\n';
        }
        EXPECT_EQ(bar, expected);
    }
}

TEST_F(ListTest, ScrollBarRefusesImpossibleGeometry)
{
    const int cases[][4] = {{10, 1, 5, 1}, {0, 1, 5, 1}, {40, 0, 5, 1}, {40, 1, 0, 1}, {40, 1, 5, -1}};
    clearScreenBuffer();
    for (const auto &[height, length, total, position] : cases) {
        char message[160];
        snprintf(message, sizeof message,
                 "drawScrollBar return, totalLines %d, barHeight %d, relativeLength %d, relativePosition %d, "
                 "totalScrBarLen %d\n",
                 total, height, length, position, height - 10);
        EXPECT_EQ(printed([&] { drawScrollBar(0, 63, height, length, total, position); }), message);
    }
    EXPECT_EQ(std::count(screenBuffer, std::end(screenBuffer), 0), 1024);
}

/* Without any glyph, each load is reported. Measuring n characters takes n + 1 loads; drawing them takes one for the
 * height, n + 1 for the width and two for each character. */
TEST(ListLoads, TextsAreMeasuredOnceWhereTheyAreNeeded)
{
    const TestRoot no_glyphs;
    const char *items[] = {"D", "E", nullptr};
    WidgetState state = {};
    EXPECT_EQ(loads([&] { drawSelect(1, "A\tB", "C", items, &state, ACTION_ENTER); }), "B9 A8 C8 D8 E7 ");
}

TEST(ListLoads, OverlongTitleIsCutBetweenCharacters)
{
    const TestRoot no_glyphs;
    const std::string title = std::string(126, 'a') + "\xC3\xA9\tright";
    WidgetState state = {};
    const std::string title_loads = loads([&] { drawSelect(1, title.c_str(), nullptr, nullptr, &state, 0); });
    EXPECT_EQ(title_loads.find_first_not_of("a0123456789"), title_loads.size() - 1) << title_loads;
}
