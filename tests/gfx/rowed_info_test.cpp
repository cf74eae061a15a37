#include "gfx/rowed_info.h"

#include "core/actions.h"
#include "tests/gfx/widget_screen.h"

#include <cstring>

static InfoRow row(const std::string &label, const std::string &value, const std::string &prefix = "")
{
    InfoRow row = {};
    strncpy(row.label, label.c_str(), sizeof row.label - 1);
    strncpy(row.value, value.c_str(), sizeof row.value - 1);
    strncpy(row.prefix, prefix.c_str(), sizeof row.prefix - 1);
    return row;
}

/* Rows "A~1", "B~2", ... and their end. */
static std::vector<InfoRow> table(int count)
{
    std::vector<InfoRow> rows;
    for (int i = 0; i < count; i++)
        rows.push_back(row(std::string(1, static_cast<char>('A' + i % 26)), std::to_string(i + 1)));
    rows.push_back({});
    return rows;
}

class RowedInfoTest : public WidgetTest
{
protected:
    /* The rows of a table with title and bottom line after `action`: room for three. */
    std::string view(const std::vector<InfoRow> &rows, int action)
    {
        clearScreenBuffer();
        EXPECT_EQ(printed([&] { drawRowedInfo(1, "Title", "keys", rows.data(), &state, action); }), "");
        return read_line(49, 1, 117) + " " + read_line(37, 1, 117) + " " + read_line(25, 1, 117);
    }

    WidgetState state = {};
};

TEST_F(RowedInfoTest, KeysScrollByARow)
{
    const struct {
        int count, action;
        const char *view;
    } steps[] = {
        {5, ACTION_DOWN, "B~2 C~3 D~4"}, {5, ACTION_ENTER, "A~1 B~2 C~3"}, {5, ACTION_UP, "A~1 B~2 C~3"},
        {5, ACTION_DOWN, "B~2 C~3 D~4"}, {5, ACTION_DOWN, "C~3 D~4 E~5"},  {5, ACTION_DOWN, "C~3 D~4 E~5"},
        {5, ACTION_TICK, "C~3 D~4 E~5"}, {5, ACTION_UP, "B~2 C~3 D~4"},    {4, ACTION_OK, "B~2 C~3 D~4"},
        {5, ACTION_DOWN, "C~3 D~4 E~5"}, {4, ACTION_TICK, "A~1 B~2 C~3"}, // a table that shrinks below the view
    };
    for (const auto &step : steps)
        EXPECT_EQ(view(table(step.count), step.action), step.view) << "at " << &step - steps;
}

TEST_F(RowedInfoTest, ValuesEndAtTheRightEdge)
{
    const struct {
        int count;
        InfoRow first;
        int right;
        const char *line;
    } cases[] = {
        {1, row("Label", "10.0.0.2"), 127, "Label~10.0.0.2"},
        {4, row("Label", "10.0.0.2"), 117, "Label~10.0.0.2"},
        {1, row("Label", "7", " "), 127, "Label~ 7"},
        {1, row("", "value"), 127, "value"},
        {4, row("L", "b", "a"), 118, "L~ab"}, // the spacing of the joint pushes the value out
        {1, row("ABCDEFGHIJKLMNOPQRSTUVWXYZ", "7"), 127, "ABCDEFGHIJKLMNOPQRST~7"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(&test - cases);
        auto rows = table(test.count);
        rows[0] = test.first;
        clearScreenBuffer();
        EXPECT_EQ(printed([&] { drawRowedInfo(1, "Title", "keys", rows.data(), &state, ACTION_ENTER); }), "");
        EXPECT_EQ(read_line(49, 1, test.right), test.line);
        EXPECT_EQ(getDot(test.right, 48), 1);
    }
}

TEST_F(RowedInfoTest, RefusesWhatItCannotDraw)
{
    write_glyph(0xE9, 5, 12);
    write_glyph('T', 5, 0);
    std::string accents;
    for (int i = 0; i < 50; i++)
        accents += "\xC3\xA9";
    const InfoRow none[] = {{}};
    const InfoRow flat[] = {row("T", ""), {}};
    const InfoRow joint[] = {row("L", "b", "a"), {}};
    /* A prefix of 100 bytes, and of the accents those that stay below 152 bytes: 125 characters. */
    const InfoRow overlong[] = {row("", accents, std::string(100, 'a')), {}};
    const struct {
        const InfoRow *rows;
        WidgetState *state;
        const char *message;
    } cases[] = {
        {joint, nullptr, "drawRowedInfo return\n"},
        {nullptr, &state, ""},
        {none, &state, "drawRowedInfo return, totalContentLineNum 0\n"},
        {flat, &state, ""},
        {joint, &state, "drawString return, x 118, y 63, strWidth 11, fontHeight 12\n"},
        {overlong, &state, "drawString return, x -770, y 63, strWidth 749, fontHeight 12\n"},
    };
    for (const auto &test : cases)
        EXPECT_EQ(printed([&] { drawRowedInfo(1, nullptr, nullptr, test.rows, test.state, 0); }), test.message);
}

TEST_F(RowedInfoTest, LongTablesScrollEachLabelByItself)
{
    auto rows = table(253);
    const std::string label = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    rows[251] = row(label, "");
    rows[252] = row(label, "");
    view(rows, ACTION_ENTER);
    for (int i = 0; i < 250; i++)
        view(rows, ACTION_DOWN);
    EXPECT_EQ(view(rows, ACTION_TICK).substr(0, 20), "Q~251 DEFGHIJKLMNOPQ") << "drawn for the third time";
    EXPECT_EQ(read_line(25, 1, 6), "C") << "drawn for the second time";
}

TEST_F(RowedInfoTest, GarbageInTheRecordIsHarmless)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; round++) {
        const int count = 1 + static_cast<int>(random() % 26);
        state = garbage(random);
        view(table(count), static_cast<int>(random() % 10));
        ASSERT_GE(state.current, 0);
        ASSERT_LE(state.current, std::max(count - 3, 0));
    }
}

/* As ListLoads: once for the height, then each row's texts measured and drawn. */
TEST(RowedInfoLoads, TextsAreMeasuredOnceWhereTheyAreNeeded)
{
    const TestRoot no_glyphs;
    const InfoRow rows[] = {row("L", "V", ":"), {}};
    WidgetState state = {};
    EXPECT_EQ(loads([&] { drawRowedInfo(1, nullptr, nullptr, rows, &state, ACTION_ENTER); }),
              "L1 V1 :1 V2 :2 L7 :3 V1 :2 V2 ");
}
