#include "gfx/frame_buffer.h"
#include "gfx/shapes.h"
#include "tests/support/test_root.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <numbers>
#include <set>

using Pixels = std::set<std::pair<int, int>>;

static Pixels litPixels()
{
    Pixels pixels;
    for (int i = 0; i < LCD_WIDTH * LCD_HEIGHT; i++)
        if (getDot(i % LCD_WIDTH, i / LCD_WIDTH))
            pixels.emplace(i % LCD_WIDTH, i / LCD_WIDTH);
    return pixels;
}

TEST(Shapes, LinesArcsAndRefusals)
{
    const Pixels rising = {{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}};
    const Pixels half = {{17, 20}, {17, 21}, {18, 22}, {19, 23}, {20, 23}, {21, 23}, {22, 22}, {23, 21}, {23, 20}};
    Seed seed = {};
    SeedStack stack;
    initSeedStack(&stack);
    const struct {
        std::function<void()> draw;
        Pixels pixels;
        const char *message;
    } cases[] = {
        {[] { drawArbitraryLine(0, 0, 4, 2, DRAW_NORMAL); }, rising, ""},
        {[] { drawArbitraryLine(4, 2, 0, 0, DRAW_REVERSE); }, rising, ""},
        {[] { drawArbitraryLine(0, 0, 2, 4, DRAW_NORMAL); }, {{0, 0}, {1, 1}, {1, 2}, {2, 3}, {2, 4}}, ""},
        {[] { drawArbitraryLine(0, 2, 4, 0, DRAW_NORMAL); }, {{0, 2}, {1, 1}, {2, 1}, {3, 0}, {4, 0}}, ""},
        {[] { drawArbitraryLine(0, 4, 2, 0, DRAW_NORMAL); }, {{0, 4}, {0, 3}, {1, 2}, {1, 1}, {2, 0}}, ""},
        {[] { drawArbitraryLine(3, 2, 3, 0, DRAW_NORMAL); }, {{3, 0}, {3, 1}, {3, 2}}, ""},
        {[] { drawArbitraryLine(3, 5, 3, 5, DRAW_NORMAL); }, {}, ""},
        {[] { drawArbitraryLine(126, 0, 500, 0, 3); }, {}, ""},
        {[] { drawArbitraryLine(127, 0, 128, 0, DRAW_NORMAL); }, {{127, 0}}, "drawDot return, x 128, y 0\n"},
        {[] { drawCircle(3, 20, 20, 180); }, half, ""},
        {[] { drawCircle(10, 20, 20, 360); }, {}, "drawBresenhamCircle return, angle 360\n"},
        {[] { drawCircle(10, 5, 20, 90); }, {}, "drawBresenhamCircle return, x0 5, y0 20, radius 10\n"},
        {[] { drawCircle(-10, 120, 20, 90); }, {}, "drawBresenhamCircle return, x0 120, y0 20, radius -10\n"},
        {[] { drawBresenhamSector(44, 50, 49, 13, 90); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(50, 50, 63, 13, 90); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(44, 50, 63, 13, 0); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(44, 50, 63, 13, -1); }, {}, ""},
        {[&] { pushSeed(&seed, nullptr); }, {}, "Seed or seedStack is empty\n"},
        {[&] { popSeed(nullptr, &stack); }, {}, "Seed or seedStack is empty\n"},
        {[&] { popSeed(&seed, &stack); }, {}, "The seed stack is empty\n"},
    };
    for (size_t i = 0; i < std::size(cases); i++) {
        clearScreenBuffer();
        EXPECT_EQ(printed(cases[i].draw), cases[i].message);
        EXPECT_TRUE(litPixels() == cases[i].pixels) << "case " << i;
    }
}

/* Pixels well within the band are set, those well outside are clear. */
TEST(Shapes, SectorsAreClosedAndFilled)
{
    constexpr double tolerance = 1.1; // pixels
    const struct {
        int inner, outer, x0, y0;
    } dials[] = {{44, 50, 63, 13}, {44, 50, 63, 11}, {31, 38, 85, 11}, {18, 23, 26, 38}};
    for (const auto &dial : dials) {
        for (int angle = 5; angle <= 180; angle++) {
            clearScreenBuffer();
            EXPECT_EQ(printed([&] { drawBresenhamSector(dial.inner, dial.outer, dial.x0, dial.y0, angle); }), "");
            for (int i = 0; i < LCD_WIDTH * LCD_HEIGHT; i++) {
                const double west = dial.x0 - i % LCD_WIDTH, up = i / LCD_WIDTH - dial.y0;
                const double radius = std::hypot(west, up);
                const double ahead = (angle * std::numbers::pi / 180 - std::atan2(up, west)) * radius;
                const double depth = std::min({radius - dial.inner, dial.outer - radius, ahead, up});
                ASSERT_TRUE(std::abs(depth) <= tolerance || getDot(i % LCD_WIDTH, i / LCD_WIDTH) == (depth > 0))
                    << i << " of " << dial.outer << " to " << angle;
            }
        }
    }
}

/* Walls in every other column; each row without them opens 128 runs, more than the stack holds when there are two. */
TEST(Shapes, FillsReachAllThatTheirStackCanRemember)
{
    for (const int openRows : {1, 2}) {
        fillScreenBuffer(0x55);
        for (int row = 0; row < openRows; row++)
            memset(screenBuffer + (20 + 12 * row) * LCD_ROW_BYTES, 0, LCD_ROW_BYTES);
        const Seed seed = {0, 43};
        SeedStack stack;
        initSeedStack(&stack);
        const std::string messages = printed([&] { scanLineSeedFill(&seed, &stack); });
        EXPECT_EQ(messages.substr(0, 23), openRows == 1 ? "" : "The seed stack is full\n");
        EXPECT_EQ(litPixels().size() == LCD_WIDTH * LCD_HEIGHT, openRows == 1);
    }
}
