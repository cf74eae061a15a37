#include "gfx/info.h"

#include "core/actions.h"
#include "gfx/widget.h"
#include "tests/gfx/drawn_text.h"

#include <vector>

/* The rows of a page after `action`: three, with "more" at the end of the last one where a page follows. */
static std::string view(const std::string &text, WidgetState *state, int action)
{
    clearScreenBuffer();
    EXPECT_EQ(printed([&] { drawInfo(1, "Title", "keys", text.c_str(), state, action); }), "") << text;
    const bool bar = state->lineCount > 3;
    EXPECT_EQ(getDot(119, 48), bar) << text;
    return read_rows(bar ? ROW_RIGHT_BESIDE_BAR : ROW_RIGHT);
}

TEST(Info, FitLineBreaksTheText)
{
    std::string marks; // of two bytes and no width
    for (int i = 0; i < 100; i++)
        marks += "\xCC\x80";
    const struct {
        int language;
        std::string text;
        int width;
        std::string line;
        int consumed;
    } cases[] = {
        {0, "A\n\nB", 127, "A", 1},
        {0, "\r\f\nA\rB", 127, "A", 4},
        {0, "aaaa bbbb", 51, "aaaa bbbb", 9},
        {8, "aaaa bbbb", 50, "aaaa ", 5},
        {7, "aaaa bbbb", 50, "aaaa bbb", 8},
        {0, "aaaa bbbb", 27, "aaaa", 4}, // the break character does not fit
        {0, "aa-aa bbbb", 26, "aa-", 3},
        {0, "\naaaaaaaa b", 40, "", 1}, // no break character
        {0, "-aaaaaaaaa", 40, "", 0},   // none but the first
        {0, "  a", 127, " a", 3},
        {0, "\ta", 127, "a", 2},
        {7, "a\xE4\xB8", 127, "a\xE4\xB8", 3},
        {7, marks, 127, marks.substr(0, 142), 142}, // no more than the buffer holds
        {0, marks.substr(0, 140) + "a " + marks, 127, marks.substr(0, 140) + "a ", 142},
    };
    const GlyphRoot root;
    root.glyph(0x300, 0, 12);
    for (const auto &test : cases) {
        root.use_language(test.language);
        const std::vector<char> text(test.text.c_str(), test.text.c_str() + test.text.size() + 1);
        std::vector<char> line(LINE_BUFFER_BYTES, '#');
        EXPECT_EQ(fitLine(1, text.data(), line.data(), test.width), test.consumed) << "at " << &test - cases;
        EXPECT_EQ(std::string(line.data()), test.line) << "at " << &test - cases;
    }
}

TEST(Info, TextsFillPages)
{
    const struct {
        const char *text;
        std::vector<const char *> pages;
    } cases[] = {
        {"", {"||"}},
        {"A\fB", {"A||more", "B||"}},
        {"A\f\fB", {"A||more", "||"}}, // a line that begins with a form feed is a blank one
        /* A last line that would stand alone goes when it has room behind the one before: up to 116 pixels. */
        {"A\nB\nC\nD", {"A|B|C"}},
        {"A\nB\nccccccc\nddddd dddd.", {"A|B|ccccccc"}},
        {"A\nB\nccccccc\nddddd ddddd", {"A|B|ccccccc~more", "ddddd ddddd||"}},
        /* What does not fit beside the mark goes to the next page; what does not fit beside the bar ends the text. */
        {"A\naaaaaaaaaa aaaaaa bbbbbbbbbbbbbbbbbb cccc", {"A|aaaaaaaaaa aaaaaa |more", "bbbbbbbbbbbbbbbbbb |cccc|"}},
        {"aa bbbbbbbbbbbbbbbbbbbb\nC\nD", {"aa ||"}},
    };
    const GlyphRoot root;
    for (const auto &test : cases) {
        WidgetState state = {};
        for (const char *page : test.pages)
            EXPECT_EQ(view(test.text, &state, page == test.pages[0] ? ACTION_ENTER : ACTION_DOWN), page) << test.text;
    }
}

TEST(Info, ChangedTextIsShownAsFarAsItReaches)
{
    const GlyphRoot root;
    root.glyph(0x3A9, 5, 12); // read back as its low byte
    WidgetState state = {};
    view("12\n345\n6", &state, ACTION_ENTER);
    EXPECT_EQ(view("ab", &state, ACTION_TICK), "ab||");
    EXPECT_EQ(view("a\nb\nc", &state, ACTION_TICK), "a|b|");
    EXPECT_EQ(view("-\xCE\xA9\xCE\xA9\xCE\xA9\xCE\xA9", &state, ACTION_TICK), "-\xA9\xA9\xA9\xA9|\xA9\xA9\xA9|\xA9");
}
