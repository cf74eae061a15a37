#include "gfx/text.h"

#include "gfx/glyph.h"
#include "gfx/utf8.h"
#include "tests/gfx/drawn_text.h"

#include <climits>

using namespace std::string_literals;

/* What stands on the line with top edge 63, behind the number of its first column. */
static std::string shown()
{
    int x = 0;
    while (x < LCD_WIDTH && !getDot(x, 62))
        x++;
    return x == LCD_WIDTH ? "" : std::to_string(x) + " " + read_line(63, x);
}

TEST(Text, WidthIsGlyphsAndTheSpacingBetweenLetters)
{
    std::string broken;
    for (const char c : " ,.:-\x12\x11\x10/'_&!;[]`|"s)
        broken += "a"s + c;
    const struct {
        std::string text;
        int maxChars, width;
    } cases[] = {
        {"", 0, 0}, {"abc", 0, 17}, {"abc", 2, 11}, {"ab.", 2, 11}, {"abc", 9, 17}, {broken, 0, 36 * 5},
    };
    const GlyphRoot root;
    for (const auto &c : cases)
        EXPECT_EQ(getStringWidth(1, c.text.c_str(), c.maxChars), c.width) << c.text;
    EXPECT_EQ(printed([] { EXPECT_EQ(getStringWidth(1, nullptr, 0), 0); }), "getStringWidth return, no string\n");
    const std::string miss = "no bitmap for U_00ef_2 file name /sbin/lcd_ml/_auto_bitmap_/U_00EF_2\n";
    EXPECT_EQ(printed([] { getStringWidth(2, "\xC3\xAF", 0); }), miss + miss);
    root.picture("U_0041", "\xFF\xFF\0\1"s);
    EXPECT_EQ(getStringWidth(1, std::string(40000, 'A').c_str(), 0), INT_MAX);
}

TEST(Text, LinesStandWhereTheirAlignmentSaysOrAreRefused)
{
    const struct {
        int x, y, align;
        const char *text;
        std::string shown, refusal;
    } cases[] = {
        {117, 63, ALIGN_LEFT, "ab", "117 ab", ""},
        {118, 63, ALIGN_LEFT, "ab", "", "x 118, y 63, strWidth 11, fontHeight 12"},
        {5, 63, ALIGN_CENTER, "ab", "0 ab", ""},
        {4, 63, ALIGN_CENTER, "ab", "", "x -1, y 63, strWidth 11, fontHeight 12"},
        {127, 63, ALIGN_RIGHT, "ab", "117 ab", ""},
        {0, 64, ALIGN_LEFT, "ab", "", "x 0, y 64, strWidth 11, fontHeight 12"},
        {0, 10, ALIGN_LEFT, "ab", "", "x 0, y 10, strWidth 11, fontHeight 12"},
        {INT_MIN, 63, ALIGN_RIGHT, "a", "", "x 2147483644, y 63, strWidth 5, fontHeight 12"},
        {0, 63, ALIGN_LEFT, nullptr, "", "no string"},
        {0, 63, ALIGN_LEFT, "", "", ""},
    };
    const GlyphRoot root;
    for (const auto &c : cases) {
        clearScreenBuffer();
        const std::string message = c.refusal.empty() ? "" : "drawString return, " + c.refusal + "\n";
        EXPECT_EQ(printed([&] { drawString(c.x, c.y, 1, c.align, DRAW_NORMAL, c.text); }), message);
        EXPECT_EQ(shown(), c.shown) << c.x << " " << c.y << " " << c.align;
    }
    const Utf8Char a = {{'a', 0, 0}, 1};
    for (const auto &[x, y] : {std::pair{-1, 63}, {128, 63}, {9, 64}, {124, 63}, {9, 10}})
        EXPECT_EQ(printed([&] { drawCharacter(x, y, 1, DRAW_NORMAL, &a); }), "drawCharacter return\n") << x << " " << y;
}

TEST(Text, ReverseIsLightOnADarkBox)
{
    const GlyphRoot root;
    clearScreenBuffer();
    drawString(0, 63, 1, ALIGN_LEFT, DRAW_REVERSE, "a.zz");
    EXPECT_EQ(read_line(63, 0, 22), "[a.zz]");
    EXPECT_TRUE(getDot(21, 63) && !getDot(22, 63) && !getDot(0, 51)) << "run on by one spacing";
}

TEST(Text, LongTextsMoveOnByACharacter)
{
    const struct {
        const char *text;
        int maxWidth, step;
        std::string shown;
        int hold;
    } calls[] = {
        {"abcdefgh", 29, 0, "0 abcde", 0},
        {"abcdefgh", 29, 1, "0 bcdef", 0},
        {"abcdefgh", 29, 2, "0 cdefg", 0},
        {"abcdefgh", 29, 1, "0 defgh", 0},
        {"abcdefgh", 29, 1, "0 defgh", 1},
        {"abcdefgh", 29, 1, "0 defgh", 2},
        {"abcdefgh", 29, 1, "0 defgh", 3},
        {"abcdefgh", 29, 1, "0 abcde", 0},
        {"abcdefgh", 29, 0, "0 abcde", 0},    // from the start again
        {"abcdefgh", 47, 1, "0 abcdefgh", 0}, // fits: also from the start
        {"abcd", 11, 1, "0 bc", 0},
        {"abcd", 11, 1, "0 cd", 0},
        {"abcd", 11, 1, "0 cd", 1},
        {"ab", 5, 1, "0 a", 1}, // shorter than where the last one stood; the hold stays
        {"ab", 4, 1, "", 1},    // not one character has room
    };
    const GlyphRoot root;
    ScrollState state = {};
    for (const auto &c : calls) {
        clearScreenBuffer();
        drawStringScroll(0, 63, 1, ALIGN_LEFT, DRAW_NORMAL, c.text, c.maxWidth, c.step, &state);
        EXPECT_EQ(shown(), c.shown) << "at " << &c - calls;
        EXPECT_EQ(state.hold, c.hold) << "at " << &c - calls;
    }
}
