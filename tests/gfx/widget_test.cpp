/* What lists, pages and tables share. */
#include "gfx/widget.h"

#include "core/actions.h"
#include "gfx/info.h"
#include "gfx/list.h"
#include "gfx/rowed_info.h"
#include "tests/gfx/drawn_text.h"

#include <algorithm>
#include <functional>

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
        {[&] { drawInfo(1, nullptr, nullptr, nullptr, &state, 0); }, ""},
        {[&] { drawRowedInfo(1, nullptr, nullptr, nullptr, &state, 0); }, ""},
        {[] { drawScrollBar(118, 48, 10, 1, 4, 2); },
         "drawScrollBar return, totalLines 4, barHeight 10, relativeLength 1, relativePosition 2, totalScrBarLen 0\n"},
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
    const std::string page = printed([&] { drawInfo(1, nullptr, nullptr, "ab", &state, ACTION_ENTER); });
    EXPECT_EQ(std::ranges::count(page, '\n'), 19) << page;
    const std::string table = printed([&] { drawRowedInfo(1, nullptr, nullptr, rows, &state, ACTION_ENTER); });
    EXPECT_EQ(std::ranges::count(table, '\n'), 22) << table;
}
