#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/text.h"
#include "gfx/utf8.h"
#include "tests/gfx/glyph_root.h"

#include <climits>
#include <cstring>

using namespace std::string_literals;

static std::string letters(int count)
{
    std::string text;
    for (int i = 0; i < count; i++)
        text += static_cast<char>('a' + i % 26);
    return text;
}

/* Glyphs of 5 x 2 pixels in font 1 for the letters a to z, blank and full stop: the upper row shows the low five bits
 * of the character, the lower one is full. No other character has one. */
class Text : public testing::Test
{
protected:
    Text()
    {
        for (const char c : letters(26) + " .") {
            char name[16];
            snprintf(name, sizeof name, "U_%04X", static_cast<unsigned>(c));
            root.picture(name, "\0\5\0\2"s + static_cast<char>(c << 3) + '\xF8');
        }
        clearScreenBuffer();
    }

    GlyphRoot root;
};

/* What stands on the line with top edge 63: its letters behind the number of its first column. */
static std::string shown()
{
    std::string text;
    for (int x = 0; x < LCD_WIDTH; x++) {
        if (!getDot(x, 61))
            continue;
        if (text.empty())
            text = std::to_string(x) + " ";
        int bits = 0;
        for (const int end = x + 5; x < end; x++)
            bits = bits * 2 + getDot(x, 62);
        text += static_cast<char>(0x60 + bits);
        x--;
    }
    return text;
}

/* The characters whose glyphs `draw` looked for in vain, in this order: each load is reported. */
template <typename Draw> static std::string loads(Draw draw)
{
    const std::string messages = printed(draw);
    const std::string start = "no bitmap for U_00";
    std::string characters;
    for (size_t at = messages.find(start); at != std::string::npos; at = messages.find(start, at + 1))
        characters += static_cast<char>(std::stoi(messages.substr(at + start.size(), 2), nullptr, 16));
    return characters;
}

TEST_F(Text, GlyphsAreNamedAndMeasuredByFont)
{
    const struct {
        const char *text;
        int font, language;
        const char *name;
        int spacing, lineGap;
    } cases[] = {
        {"A", 1, 0, "U_0041", 1, 0},
        {"A", 2, 0, "U_0041_2", 2, 0},
        {"\xC3\xA9", 1, 5, "U_00e9", 1, 0},
        {"\xC3\xA9", 3, 8, "U_00e9_3", 3, 0},
        {"\xEF\xBF\xBD", 1, 6, "U_fffd", 1, 4},
        {"\xF0", 1, 7, "U_0000", 1, 4},
    };
    for (const auto &c : cases) {
        root.use_language(c.language);
        Utf8Char character;
        utf_8_get_char(c.text, 0, &character);
        char name[GLYPH_NAME_BYTES];
        EXPECT_EQ(getGlyphName(&character, c.font, name), name);
        EXPECT_STREQ(name, c.name);
        int height, width, spacing, lineGap;
        const std::string message =
            printed([&] { getFontInfo(&character, c.font, &height, &width, &spacing, &lineGap); });
        EXPECT_EQ(message.find("no bitmap for "s + c.name + " "), 0) << message;
        EXPECT_EQ(height, 12);
        EXPECT_EQ(width, c.language >= 6 ? 12 : 5);
        EXPECT_EQ(spacing, c.spacing) << c.name;
        EXPECT_EQ(lineGap, c.lineGap) << c.name;
    }
}

TEST(Glyph, BreakCharactersAreEighteenBytes)
{
    const std::string breaking = " ,.:-\x12\x11\x10/'_&!;[]`|";
    for (int byte = 0; byte < 0x80; byte++) {
        const Utf8Char character = {{static_cast<char>(byte), 0, 0}, 1};
        EXPECT_EQ(isBreakCharacter(&character), breaking.find(character.bytes[0]) != std::string::npos) << byte;
    }
    const Utf8Char wide = {{' ', '\x80', 0}, 2};
    EXPECT_EQ(isBreakCharacter(&wide), 0);
}

TEST_F(Text, WidthIsGlyphsAndTheSpacingBetweenLetters)
{
    const struct {
        std::string text;
        int maxChars, width;
    } cases[] = {{"", 0, 0},     {"ab", 0, 11},  {"a.", 0, 10},  {"a b", 0, 15},
                 {"abc", 2, 11}, {"ab.", 2, 11}, {"abc", 9, 17}, {letters(60), 54, 54 * 6 - 1}};
    for (const auto &c : cases)
        EXPECT_EQ(getStringWidth(1, c.text.c_str(), c.maxChars), c.width) << c.text;
    EXPECT_EQ(printed([] { EXPECT_EQ(getStringWidth(1, nullptr, 0), 0); }), "getStringWidth return, no string\n");
    root.picture("U_0041", "\xFF\xFF\0\1"s);
    EXPECT_EQ(getStringWidth(1, std::string(40000, 'A').c_str(), 0), INT_MAX);
}

TEST_F(Text, LinesStandWhereTheirAlignmentSaysOrAreRefused)
{
    const std::string wide = letters(22); // 131 pixels
    const std::string refused = "drawString return, ";
    const struct {
        int x, y, align;
        const char *text;
        std::string shown, message;
    } cases[] = {
        {0, 63, ALIGN_LEFT, "ab", "0 ab", ""},
        {117, 63, ALIGN_LEFT, "ab", "117 ab", ""},
        {118, 63, ALIGN_LEFT, "ab", "", refused + "x 118, y 63, strWidth 11, fontHeight 2\n"},
        {64, 63, ALIGN_CENTER, "ab", "59 ab", ""},
        {5, 63, ALIGN_CENTER, "ab", "0 ab", ""},
        {4, 63, ALIGN_CENTER, "ab", "", refused + "x -1, y 63, strWidth 11, fontHeight 2\n"},
        {127, 63, ALIGN_RIGHT, "ab", "117 ab", ""},
        {9, 63, ALIGN_RIGHT, "ab", "", refused + "x -1, y 63, strWidth 11, fontHeight 2\n"},
        {0, 64, ALIGN_LEFT, "ab", "", refused + "x 0, y 64, strWidth 11, fontHeight 2\n"},
        {0, 0, ALIGN_LEFT, "ab", "", refused + "x 0, y 0, strWidth 11, fontHeight 2\n"},
        {0, 63, ALIGN_LEFT, wide.c_str(), "", refused + "x 0, y 63, strWidth 131, fontHeight 2\n"},
        {INT_MIN, 63, ALIGN_RIGHT, "a", "", refused + "x 2147483644, y 63, strWidth 5, fontHeight 2\n"},
        {0, 63, ALIGN_LEFT, nullptr, "", refused + "no string\n"},
        {0, 63, ALIGN_LEFT, "", "", ""},
    };
    for (const auto &c : cases) {
        clearScreenBuffer();
        EXPECT_EQ(printed([&] { drawString(c.x, c.y, 1, c.align, DRAW_NORMAL, c.text); }), c.message);
        EXPECT_EQ(shown(), c.shown) << c.x << " " << c.y << " " << c.align;
    }
    const Utf8Char a = {{'a', 0, 0}, 1};
    for (const auto &[x, y] : {std::pair{-1, 9}, {128, 9}, {9, 64}, {124, 9}, {9, 0}})
        EXPECT_EQ(printed([&] { drawCharacter(x, y, 1, DRAW_NORMAL, &a); }), "drawCharacter return\n") << x << " " << y;
}

/* A dark box one row higher than the letters, run on by one spacing. */
TEST_F(Text, ReverseIsLightOnADarkBox)
{
    drawString(0, 63, 1, ALIGN_LEFT, DRAW_REVERSE, "a.z");
    const uint8_t rows[][2] = {{0xFF, 0xFF}, {0xF4, 0x4B}, {0xFF, 0xFE}, {0x00, 0x00}};
    for (int row = 0; row < 4; row++)
        EXPECT_EQ(memcmp(screenBuffer + row * LCD_ROW_BYTES, rows[row], 2), 0) << row;
    EXPECT_EQ(printed([] { drawString(127, 63, 1, ALIGN_RIGHT, DRAW_REVERSE, "z"); }),
              "drawRectangle return, x 128, y 63, width 1, height 2\n");
}

TEST_F(Text, GlyphsAreLoadedAtEveryUse)
{
    ScrollState state = {};
    const auto draw = [](int x, const char *s) {
        return loads([&] { drawString(x, 63, 1, ALIGN_LEFT, DRAW_NORMAL, s); });
    };
    const auto scroll = [&](int maxWidth, int step) {
        return loads([&] { drawStringScroll(0, 63, 1, ALIGN_LEFT, DRAW_NORMAL, "ABC", maxWidth, step, &state); });
    };
    const std::string whole = "AABC"; // a measurement: the first character, then each
    EXPECT_EQ(loads([] { getStringWidth(1, "ABC", 2); }), "AAB");
    EXPECT_EQ(draw(0, "ABC"), "A" + whole + "AABBCC");
    EXPECT_EQ(draw(-9, "ABC"), "A" + whole);
    EXPECT_EQ(draw(0, "\xE4\xB8"), std::string(5, '\0'));
    EXPECT_EQ(scroll(17, 1), whole + "A" + whole + "AABBCC");
    EXPECT_EQ(scroll(11, 0), whole + whole + "AAB" + "AAABAABB");
    EXPECT_EQ(scroll(11, 1), whole + whole + "BBC" + "BBBCBBCC");
    EXPECT_EQ(scroll(11, 1), whole + "BBC" + "BBC" + "BBBCBBCC");
}

TEST_F(Text, LongTextsMoveOnByACharacter)
{
    ScrollState state = {};
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
        {"abcdefgh", 29, 1, "0 bcdef", 0},
        {"abcdefgh", 29, 0, "0 abcde", 0}, // from the start again
        {"abcdefgh", 28, 1, "0 bcde", 0},
        {"abcdefgh", 47, 1, "0 abcdefgh", 0}, // fits: also from the start
        {"abcd", 11, 1, "0 bc", 0},
        {"abcd", 11, 1, "0 cd", 0},
        {"abcd", 11, 1, "0 cd", 1},
        {"ab", 5, 1, "0 a", 1}, // shorter than where the last one stood; the hold stays
        {"ab", 4, 1, "", 1},    // not one character has room
        {"ab", -1, 0, "", 0},
        {"", -1, 1, "", 0},
    };
    for (const auto &c : calls) {
        clearScreenBuffer();
        EXPECT_EQ(
            printed([&] { drawStringScroll(0, 63, 1, ALIGN_LEFT, DRAW_NORMAL, c.text, c.maxWidth, c.step, &state); }),
            "");
        EXPECT_EQ(shown(), c.shown) << c.text << " " << c.maxWidth;
        EXPECT_EQ(state.hold, c.hold) << c.text << " " << c.maxWidth;
    }
}

TEST_F(Text, ScrollingTextsAreCutToTheirCopy)
{
    for (const auto &[text, kept] : {std::pair{letters(400), 299}, {letters(298) + "\xE4\xB8\xAD", 298}}) {
        ScrollState state = {290, 0};
        clearScreenBuffer();
        printed([&] { drawStringScroll(0, 63, 1, ALIGN_LEFT, DRAW_NORMAL, text.c_str(), 128, 1, &state); });
        EXPECT_EQ(shown(), "0 " + text.substr(290, static_cast<size_t>(kept) - 290));
    }
    ScrollState state = {4, 0};
    EXPECT_EQ(printed([&] { drawStringScroll(0, 63, 1, ALIGN_LEFT, DRAW_NORMAL, nullptr, 128, 1, &state); }),
              "getStringWidth return, no string\ndrawString return, no string\n");
    EXPECT_EQ(state.first, 0);
}
