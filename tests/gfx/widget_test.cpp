/* What lists, pages and tables share. */
#include "gfx/widget.h"

#include "core/actions.h"
#include "gfx/info.h"
#include "gfx/list.h"
#include "gfx/rowed_info.h"
#include "tests/gfx/drawn_text.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <random>
#include <vector>

static const std::string WIDE = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

TEST(Widget, FrameTextsScrollByThemselves)
{
    const GlyphRoot root;
    WidgetState state = {};
    const auto draw = [&](const std::string &title, int action) {
        clearScreenBuffer();
        drawSelect(1, title.c_str(), WIDE.c_str(), nullptr, &state, action);
        return read_line(63, 0) + " " + read_line(11, 0);
    };
    draw(WIDE + "\tOn", ACTION_ENTER);
    draw(WIDE + "\tOn", ACTION_TICK);
    EXPECT_EQ(draw(WIDE + "\tOn", ACTION_TICK), "CDEFGHIJKLMNOPQRST~On CDEFGHIJKLMNOPQRSTUVW");
    EXPECT_EQ(draw("-\t" + WIDE, ACTION_ENTER), "ABCDEFGHIJKLMNOPQRS ABCDEFGHIJKLMNOPQRSTU");
}

TEST(Widget, RefusesWithoutStateOrRoom)
{
    const GlyphRoot root;
    root.glyph('T', 5, 64);
    root.glyph('F', 5, 0);
    const char *tall[] = {"T", nullptr}, *flat[] = {"F", nullptr};
    const InfoRow rows[] = {{"L", "b", "a"}, {}}, flat_rows[] = {{"F", "", ""}, {}};
    WidgetState state = {};
    const std::pair<std::function<void()>, const char *> cases[] = {
        {[&] { drawSelect(1, "Menu", "keys", tall, nullptr, 0); }, "drawSelect return\n"},
        {[&] { drawSelect(1, "Menu", "keys", tall, &state, 0); }, "drawSelect return\n"},
        {[&] { drawSelect(1, "Menu", "keys", flat, &state, 0); }, "drawSelect return\n"},
        {[&] { drawInfo(1, nullptr, "keys", "Text", nullptr, 0); }, "drawInfo return\n"},
        {[&] { drawInfo(1, nullptr, "keys", "Text", &state, 0); }, "drawInfo return\n"},
        {[&] { drawRowedInfo(1, nullptr, nullptr, rows, nullptr, 0); }, "drawRowedInfo return\n"},
        {[&] { drawRowedInfo(1, nullptr, nullptr, flat_rows, &state, 0); }, ""},
        /* The spacing where prefix and value join pushes the value out. */
        {[&] { drawRowedInfo(1, nullptr, nullptr, rows, &state, 0); },
         "drawString return, x 118, y 63, strWidth 11, fontHeight 12\n"},
    };
    for (const auto &[draw, message] : cases)
        EXPECT_EQ(printed(draw), message);
}

/* A page measures its height, a line's width with each further character, and the same again to draw it; a table its
 * height, then each row's texts to place and to draw them. */
TEST(Widget, GlyphsAreLoadedOnceWhereTheyAreNeeded)
{
    const TestRoot no_glyphs;
    const InfoRow rows[] = {{"L", "V", ":"}, {}};
    WidgetState state = {};
    EXPECT_EQ(loads([&] { drawInfo(1, nullptr, nullptr, "ab", &state, ACTION_ENTER); }), "aaaaabaaaabaaabaabb");
    EXPECT_EQ(loads([&] { drawRowedInfo(1, nullptr, nullptr, rows, &state, ACTION_ENTER); }), "LV:VV::LLLLLLL:::V::VV");
}

/* A record as no widget leaves it. */
static WidgetState garbage(std::mt19937 &random)
{
    static const int32_t values[] = {INT_MIN, INT_MIN + 1, -200, -1, 0, 1, 2, 3, 7, 15, 21, 199, 201, INT_MAX};
    const auto any = [&] { return values[random() % std::size(values)]; };
    WidgetState state = {any(), any(), any(), any(), static_cast<uint16_t>(random()), {}};
    for (int32_t &start : state.lineStart)
        start = any();
    return state;
}

TEST(Widget, GarbageIsHarmless)
{
    const GlyphRoot root;
    std::mt19937 random(2);
    for (int round = 0; round < 300; round++) {
        const int count = 1 + static_cast<int>(random() % 25);
        const int action = static_cast<int>(random() % 10);
        std::vector<const char *> items(static_cast<size_t>(count), "A");
        items.push_back(nullptr);
        WidgetState state = garbage(random);
        clearScreenBuffer();
        drawSelect(1, "Menu", "keys", items.data(), &state, action);
        const std::string shown = read_rows();
        ASSERT_EQ(std::count(shown.begin(), shown.end(), '['), 1) << shown;
        ASSERT_LT(getSelectedItemId(&state), std::min(count, MAX_LIST_ITEMS));

        std::vector<InfoRow> rows(1 + random() % 253, InfoRow{"L", "V", ""});
        const int last = std::max(static_cast<int>(rows.size()) - 3, 0);
        rows.push_back({});
        state = garbage(random);
        drawRowedInfo(1, "Title", "keys", rows.data(), &state, action);
        ASSERT_EQ(state.current, std::clamp(state.current, 0, last));

        std::string text;
        for (int i = 0; round % 10 == 0 && i < 300; i++)
            text += random() % 2 ? "a\n" : "a\f";
        while (random() % 30 != 0)
            text += random() % 2 ? " ab\f\n"[random() % 5] : static_cast<char>(random());
        state = garbage(random);
        printed([&] { drawInfo(1, "Title", "keys", text.c_str(), &state, action); });
        ASSERT_LE(state.lineCount, MAX_PAGE_LINES);
        ASSERT_EQ(state.current, std::clamp(state.current, 0, state.lineCount / 3));
    }
}
