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
    for (int x = 0; x < LCD_WIDTH; x++) {
        for (int y = 0; y < LCD_HEIGHT; y++) {
            if (getDot(x, y))
                pixels.emplace(x, y);
        }
    }
    return pixels;
}

TEST(Shapes, EdgeCases)
{
    const Pixels rising = {{0, 0}, {1, 1}, {2, 1}, {3, 2}, {4, 2}};
    const Pixels upright = {{3, 0}, {3, 1}, {3, 2}, {3, 3}, {3, 4}, {3, 5}};
    /* Arcs of radius 3 around (20, 20) */
    const Pixels eighth = {{17, 20}, {17, 21}, {18, 22}};
    const Pixels quarter = {{17, 20}, {17, 21}, {18, 22}, {19, 23}};
    const Pixels three_eighths = {{17, 20}, {17, 21}, {18, 22}, {19, 23}, {20, 23}, {21, 23}, {22, 22}};
    const Pixels half = {{17, 20}, {17, 21}, {18, 22}, {19, 23}, {20, 23}, {21, 23}, {22, 22}, {23, 21}, {23, 20}};
    const struct {
        std::function<void()> draw;
        Pixels pixels;
        const char *message;
    } cases[] = {
        {[] { drawArbitraryLine(0, 0, 4, 2, DRAW_NORMAL); }, rising, ""},
        {[] { drawArbitraryLine(4, 2, 0, 0, DRAW_NORMAL); }, rising, ""},
        {[] { drawArbitraryLine(0, 0, 4, 2, DRAW_REVERSE); }, rising, ""},
        {[] { drawArbitraryLine(0, 0, 2, 4, DRAW_NORMAL); }, {{0, 0}, {1, 1}, {1, 2}, {2, 3}, {2, 4}}, ""},
        {[] { drawArbitraryLine(0, 2, 4, 0, DRAW_NORMAL); }, {{0, 2}, {1, 1}, {2, 1}, {3, 0}, {4, 0}}, ""},
        {[] { drawArbitraryLine(0, 4, 2, 0, DRAW_NORMAL); }, {{0, 4}, {0, 3}, {1, 2}, {1, 1}, {2, 0}}, ""},
        {[] { drawArbitraryLine(3, 5, 3, 0, DRAW_NORMAL); }, upright, ""},
        {[] { drawArbitraryLine(3, 0, 3, 5, DRAW_NORMAL); }, upright, ""},
        {[] { drawArbitraryLine(3, 5, 3, 5, DRAW_NORMAL); }, {}, ""},
        {[] { drawArbitraryLine(0, 0, 5, 5, 0); }, {}, ""},
        {[] { drawArbitraryLine(126, 0, 500, 0, 3); }, {}, ""},
        {[] { drawArbitraryLine(126, 0, 129, 0, DRAW_NORMAL); },
         {{126, 0}, {127, 0}},
         "drawDot return, x 128, y 0\ndrawDot return, x 129, y 0\n"},
        {[] { drawCircle(3, 20, 20, 45); }, eighth, ""},
        {[] { drawCircle(3, 20, 20, 90); }, quarter, ""},
        {[] { drawCircle(3, 20, 20, 135); }, three_eighths, ""},
        {[] { drawCircle(3, 20, 20, 180); }, half, ""},
        {[] { drawCircle(10, 20, 20, 360); }, {}, "drawBresenhamCircle return, angle 360\n"},
        {[] { drawCircle(10, 20, 20, 0); }, {}, "drawBresenhamCircle return, angle 0\n"},
        {[] { drawCircle(10, 5, 20, 90); }, {}, "drawBresenhamCircle return, x0 5, y0 20, radius 10\n"},
        {[] { drawCircle(-10, 120, 20, 90); }, {}, "drawBresenhamCircle return, x0 120, y0 20, radius -10\n"},
        {[] { drawCircle(1, 20, 64, 90); }, {}, "drawBresenhamCircle return, x0 20, y0 64, radius 1\n"},
        {[] { drawCircle(INT32_MIN, 128, 20, 90); },
         {},
         "drawBresenhamCircle return, x0 128, y0 20, radius -2147483648\n"},
        {[] { drawBresenhamSector(44, 50, 49, 13, 90); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(50, 50, 63, 13, 90); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(44, 50, 63, -1, 90); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(44, 50, 63, 13, 0); }, {}, "drawBresenhamSector return\n"},
        {[] { drawBresenhamSector(44, 50, 63, 13, -1); }, {}, ""},
    };
    for (size_t i = 0; i < std::size(cases); i++) {
        clearScreenBuffer();
        EXPECT_EQ(printed(cases[i].draw), cases[i].message);
        EXPECT_TRUE(litPixels() == cases[i].pixels) << "case " << i;
    }
}

/* A pixel as seen from the centre of a circle. */
struct Polar {
    double radius;
    double degrees; // clockwise from the west
};

static Polar polar(int x, int y, int x0, int y0)
{
    const double degrees = std::atan2(y - y0, x0 - x) * 180 / std::numbers::pi;
    return {std::hypot(x - x0, y - y0), degrees < 0 ? degrees + 360 : degrees};
}

/* Pixels on a circle's circumference from one angle to another. */
static double along(double from, double to, double radius)
{
    return (to - from) * std::numbers::pi / 180 * radius;
}

TEST(Shapes, ArcsFollowTheirCircleUpToTheirAngle)
{
    constexpr int x0 = 60;
    constexpr int y0 = 31;
    constexpr int radius = 30;
    for (int angle = 1; angle <= 359; angle++) {
        clearScreenBuffer();
        int endX = 0;
        int endY = 0;
        drawBresenhamCircle(radius, x0, y0, angle, &endX, &endY);
        const Pixels pixels = litPixels();
        for (const auto &[x, y] : pixels) {
            const Polar p = polar(x, y, x0, y0);
            ASSERT_NEAR(p.radius, radius, 0.75) << angle;
            ASSERT_LT(p.degrees, angle + 0.01) << x << " " << y;
        }
        for (int degrees = 0; along(degrees, angle, radius) > 1; degrees++) {
            const double x = x0 - radius * std::cos(degrees * std::numbers::pi / 180);
            const double y = y0 + radius * std::sin(degrees * std::numbers::pi / 180);
            ASSERT_TRUE(
                std::any_of(pixels.begin(), pixels.end(),
                            [&](const auto &pixel) { return std::hypot(pixel.first - x, pixel.second - y) < 1; }))
                << degrees << " of " << angle;
        }
        const Polar end = polar(endX, endY, x0, y0);
        ASSERT_NEAR(along(end.degrees, std::min(angle, 180), radius), 0, 1.5) << angle;
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
                const int x = i % LCD_WIDTH;
                const int y = i / LCD_WIDTH;
                const Polar p = polar(x, y, dial.x0, dial.y0);
                const double depth = std::min({p.radius - dial.inner, dial.outer - p.radius,
                                               along(p.degrees, angle, p.radius), double(y - dial.y0)});
                ASSERT_TRUE(std::abs(depth) <= tolerance || getDot(x, y) == (depth > 0))
                    << x << " " << y << " of " << dial.outer << " to " << angle;
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

TEST(Shapes, TheSeedStackRefusesWhatItCannotDo)
{
    SeedStack stack;
    initSeedStack(&stack);
    Seed seed = {1, 2};
    EXPECT_TRUE(isSeedStackEmpty(nullptr));
    EXPECT_TRUE(isSeedStackEmpty(&stack));
    for (int i = 0; i < SEED_STACK_SIZE; i++)
        pushSeed(&seed, &stack);
    EXPECT_EQ(printed([&] {
                  pushSeed(&seed, &stack);
                  pushSeed(nullptr, &stack);
                  pushSeed(&seed, nullptr);
                  popSeed(nullptr, &stack);
                  popSeed(&seed, nullptr);
                  for (int i = 0; i <= SEED_STACK_SIZE; i++)
                      popSeed(&seed, &stack);
              }),
              "The seed stack is full\nSeed or seedStack is empty\nSeed or seedStack is empty\n"
              "Seed or seedStack is empty\nSeed or seedStack is empty\nThe seed stack is empty\n");
    EXPECT_TRUE(isSeedStackEmpty(&stack));
    EXPECT_EQ(seed.x * 10 + seed.y, 12);
}

TEST(Shapes, FractionsAreComparedWithoutRounding)
{
    EXPECT_EQ(compareFraction(1, 2, 2, 4), 0);
    EXPECT_EQ(compareFraction(33333, 100000, 1, 3), -1);
    EXPECT_EQ(compareFraction(5, 7, 4, 7), 1);
    EXPECT_EQ(compareFraction(3, 0, 5729578, 1000), 1); // a vertical line
    EXPECT_EQ(compareFraction(INT32_MAX, INT32_MAX - 1, INT32_MAX - 1, INT32_MAX - 2), -1);
}
