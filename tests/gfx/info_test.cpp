#include "gfx/info.h"

#include "core/actions.h"
#include "tests/gfx/widget_screen.h"

#include <cstring>

using namespace std::string_literals;

/* 94 pixels are left of a row's 117 by the mark "more". */
static constexpr int MARKED_WIDTH = ROW_RIGHT_BESIDE_BAR - 23;

class InfoTest : public WidgetTest
{
protected:
    void draw(const std::string &text, int action)
    {
        clearScreenBuffer();
        EXPECT_EQ(printed([&] { drawInfo(1, "Title", "keys", text.c_str(), &state, action); }), "") << text;
    }

    /* The pages of a text between title and bottom line, three rows each, ended by '|'; '+' stands for the mark. */
    std::string pages(const std::string &text)
    {
        std::string shown;
        int page = -1;
        for (draw(text, ACTION_ENTER); state.current != page; draw(text, ACTION_DOWN)) {
            page = state.current;
            const int right = state.lineCount > 3 ? ROW_RIGHT_BESIDE_BAR : ROW_RIGHT;
            const bool marked = read_line(25, MARKED_WIDTH + 1, right) == "more";
            shown += read_line(49, 1, right) + "|" + read_line(37, 1, right) + "|";
            shown += read_line(25, 1, marked ? MARKED_WIDTH : right) + (marked ? "+| " : "| ");
        }
        return shown;
    }

    WidgetState state = {};
};

TEST_F(InfoTest, FitLineBreaksTheText)
{
    const std::string dots = [] {
        std::string text;
        for (int i = 0; i < 100; i++)
            text += "\xCC\x80";
        return text;
    }();
    write_glyph(0x300, 0, 12);
    write_glyph(0xE9, 5, 12);
    const struct {
        int language;
        std::string text;
        int width;
        std::string line;
        int consumed;
    } cases[] = {
        {0, "", 127, "", 0},
        {0, "A\n\nB", 127, "A", 1},
        {0, "\n\nB", 127, "B", 3},
        {0, "\n", 127, "", 1},
        {0, "\r\f\nA\rB", 127, "A", 4},
        {0, "aaaa bbbb", 51, "aaaa bbbb", 9},
        {0, "aaaa bbbb", 50, "aaaa ", 5},
        {8, "aaaa bbbb", 50, "aaaa ", 5},
        {7, "aaaa bbbb", 50, "aaaa bbb", 8},
        {6, "aaaa bbbb", 50, "aaaa bbb", 8},
        {0, "aaaa bbbb", 27, "aaaa", 4}, // the break character does not fit
        {0, "aaaa-bbbb", 28, "aaaa-", 5},
        {0, "aa-aa bbbb", 26, "aa-", 3},
        {0, "aaaaaaaa b", 40, "", 0}, // no break character
        {0, "\naaaaaaaa b", 40, "", 1},
        {0, "-aaaaaaaaa", 40, "", 0}, // none but the first
        {0, " aaaaaaaaa", 40, "", 0},
        {0, "\na", 4, "", 0},
        {0, "  a", 127, " a", 3},
        {0, "\ta", 127, "a", 2},
        {0, " ", 127, "", 1},
        {7, "\xC3\xA9\xC3\xA9", 10, "\xC3\xA9", 2},
        {7, "a\xE4\xB8", 127, "a\xE4\xB8", 3},
        {7, dots, 127, dots.substr(0, 142), 142}, // no more than the buffer holds
        {0, dots, 127, "", 0},
        {0, dots.substr(0, 140) + "a " + dots, 127, dots.substr(0, 140) + "a ", 142},
        {0, dots.substr(0, 142) + "a " + dots, 127, dots.substr(0, 142) + "a", 143},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(&test - cases);
        use_language(test.language);
        const std::vector<char> text(test.text.c_str(), test.text.c_str() + test.text.size() + 1);
        std::vector<char> line(LINE_BUFFER_BYTES, '#');
        EXPECT_EQ(fitLine(1, text.data(), line.data(), test.width), test.consumed);
        EXPECT_EQ(std::string(line.data()), test.line);
    }
}

TEST_F(InfoTest, TextsFillPages)
{
    const struct {
        const char *text, *pages;
    } cases[] = {
        {"", "||| "},
        {"A\n\nB", "A|B|| "},
        {"Line1\fLine2", "Line1||+| Line2||| "},
        {"Line1\n\fLine2", "Line1|Line2|| "},
        {"A\f\fB", "A||+| ||| "}, // a line that begins with a form feed is a blank one
        /* A last line that would stand alone goes when it has room behind the one before: up to 116 pixels. */
        {"A\nB\nC\nD", "A|B|C| "},
        {"A\nB\nccccccc\nddddd dddd.", "A|B|ccccccc| "},
        {"A\nB\nccccccc\nddddd ddddd", "A|B|ccccccc+| ddddd ddddd||| "},
        /* What does not fit beside the mark goes to the next page; what does not fit beside the bar ends the text. */
        {"A\naaaaaaaaaa aaaaaa bbbbbbbbbbbbbbbbbb cccc", "A|aaaaaaaaaa aaaaaa |+| bbbbbbbbbbbbbbbbbb |cccc|| "},
        {"aa bbbbbbbbbbbbbbbbbbbb\nC\nD", "aa ||| "},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(pages(test.text), test.pages) << test.text;
        EXPECT_EQ(getDot(119, 48) == 1, strchr(test.pages, '+') != nullptr) << "the scroll bar";
    }
}

TEST_F(InfoTest, KeysTurnThePages)
{
    const struct {
        int action;
        const char *first_line;
        int thumb;
    } steps[] = {
        {ACTION_ENTER, "1", 0}, {ACTION_UP, "1", 0},    {ACTION_DOWN, "4", 8},
        {ACTION_DOWN, "7", 18}, {ACTION_DOWN, "7", 18}, {ACTION_TICK, "7", 18},
        {ACTION_LEFT, "7", 18}, {ACTION_UP, "4", 8},    {ACTION_ENTER, "1", 0},
    };
    for (const auto &step : steps) {
        draw("1\n2\n3\n4\n5\n6\n7\n8", step.action);
        EXPECT_EQ(read_line(49, 1, 117), step.first_line) << "at " << &step - steps;
        EXPECT_EQ(thumb_offset(), step.thumb) << "at " << &step - steps;
    }
}

TEST_F(InfoTest, LayoutStopsAtItsLastLine)
{
    std::string lines, pages;
    for (int i = 0; i < 300; i++) {
        lines += "ab\n";
        pages += "ab\f";
    }
    for (const std::string &text : {lines, pages}) {
        draw(text, ACTION_ENTER);
        EXPECT_EQ(state.lineCount, MAX_PAGE_LINES);
        for (int i = 0; i < 80; i++)
            draw(text, ACTION_DOWN);
        EXPECT_EQ(state.current, 66);
    }
}

TEST_F(InfoTest, ChangedTextIsShownAsFarAsItReaches)
{
    write_glyph(0xE9, 5, 12); // read back as 'i'
    const std::string accents = "-\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";
    const struct {
        std::string text;
        const char *lines;
    } cases[] = {{"ab", "ab||"}, {"", "||"}, {"a\nb\nc", "a|b|"}, {accents, "-iiii|iii|i"}};
    for (const auto &test : cases) {
        draw("12\n345\n6", ACTION_ENTER);
        EXPECT_EQ(std::vector(state.lineStart, state.lineStart + 3), (std::vector{0, 2, 6}));
        draw(test.text, ACTION_TICK);
        EXPECT_EQ(read_line(49) + "|" + read_line(37) + "|" + read_line(25), test.lines);
    }
}

TEST_F(InfoTest, RefusesWithoutStateOrRoom)
{
    write_glyph('T', 5, 64);
    EXPECT_EQ(printed([&] { drawInfo(1, nullptr, "keys", "Text", nullptr, 0); }), "drawInfo return\n");
    EXPECT_EQ(printed([&] { drawInfo(1, nullptr, "keys", "Text", &state, 0); }), "drawInfo return\n");
    EXPECT_EQ(printed([&] { drawInfo(1, nullptr, "keys", nullptr, &state, 0); }), "");
}

TEST_F(InfoTest, GarbageIsHarmless)
{
    std::mt19937 random(4);
    for (int round = 0; round < 200; round++) {
        state = garbage(random);
        std::string text;
        while (random() % 30 != 0)
            text += random() % 2 ? " ab\f\n"[random() % 5] : static_cast<char>(random());
        const int action = static_cast<int>(random() % 9);
        printed([&] { drawInfo(1, "Title", "keys", text.c_str(), &state, action); });
        ASSERT_GE(state.current, 0);
        ASSERT_LE(state.current * 3, state.lineCount);
    }
}

/* A plain word wrapper for glyphs that are all 5 pixels wide. */
class Wrapper
{
public:
    Wrapper(std::string text, bool words) : text_(std::move(text)), words_(words) {}

    struct Line {
        std::string shown;
        size_t consumed;
    };

    Line line(size_t start, int room) const
    {
        const size_t from = std::min(text_.find_first_not_of("\r\n\f", start), text_.size());
        const std::string rest = text_.substr(from, text_.find_first_of("\r\n\f", from) - from);
        size_t length = rest.size();
        while (length > 0 && width(rest.substr(0, length)) > room)
            length--;
        if (length == 0 && !rest.empty())
            return {"", 0};
        if (words_ && length < rest.size() && !takes_no_spacing(rest[length]))
            while (length > 0 && (length == 1 || !takes_no_spacing(rest[length - 1])))
                length--;
        const bool blank = length > 0 && rest[0] == ' ';
        return {rest.substr(blank, length - blank), from + length - start};
    }

    /* The starts of the lines, page by page, three a page. */
    std::vector<std::vector<size_t>> pages(int room, int last_room) const
    {
        std::vector<std::vector<size_t>> pages;
        for (size_t at = 0;;) {
            const bool last_row = !pages.empty() && pages.back().size() == 2;
            const size_t consumed = line(at, last_row ? last_room : room).consumed;
            if (consumed == 0 && (!last_row || line(at, room).consumed == 0))
                return pages;
            if (pages.empty() || pages.back().size() == 3)
                pages.emplace_back();
            pages.back().push_back(at);
            at += consumed;
            if (text_[at] == '\f')
                pages.back().resize(3, at++);
        }
    }

    /* What the pages show, as InfoTest::pages tells it. */
    std::string shown() const
    {
        int room = ROW_RIGHT;
        auto layout = pages(room, room);
        if (layout.size() > 1) {
            room = ROW_RIGHT_BESIDE_BAR;
            layout = pages(room, MARKED_WIDTH);
            drop_single_line(&layout);
        }
        std::string shown = layout.empty() ? "||| " : "";
        for (const auto &page : layout) {
            for (size_t row = 0; row < 3; row++) {
                const bool marked = row == 2 && &page != &layout.back();
                if (row < page.size() && text_[page[row]] != '\f')
                    shown += line(page[row], marked ? MARKED_WIDTH : room).shown;
                shown += marked ? "+|" : "|";
            }
            shown += " ";
        }
        return shown;
    }

private:
    static bool takes_no_spacing(char c) { return std::string_view(" ,.-").find(c) != std::string_view::npos; }

    static int width(const std::string &s)
    {
        int width = 5 * static_cast<int>(s.size());
        for (size_t i = 1; i < s.size(); i++)
            width += takes_no_spacing(s[i - 1]) || takes_no_spacing(s[i]) ? 0 : 1;
        return width;
    }

    void drop_single_line(std::vector<std::vector<size_t>> *layout) const
    {
        if (layout->size() < 2 || layout->back().size() != 1)
            return;
        const size_t start = layout->back()[0];
        const size_t before = (*layout)[layout->size() - 2][2];
        if (text_[start - 1] != '\f' && width(text_.substr(before)) < ROW_RIGHT_BESIDE_BAR)
            layout->pop_back();
    }

    std::string text_;
    bool words_;
};

TEST_F(InfoTest, RandomTextsAreWrappedAsPlainly)
{
    static const char *const separators[] = {" ", " ", " ", " ", "  ", ", ", ".", "-", "\n", "\n\n", "\f", "\n\f"};
    std::mt19937 random(5);
    for (int round = 0; round < 150; round++) {
        use_language(round % 4 == 0 ? 0 : 1);
        std::string text;
        for (int words = static_cast<int>(random() % 24); words > 0; words--) {
            const unsigned longest = random() % 20 == 0 ? 22 : 9;
            text += std::string(random() % longest, static_cast<char>('a' + random() % 26));
            text += separators[random() % std::size(separators)];
        }
        ASSERT_EQ(pages(text), Wrapper(text, true).shown()) << text;
    }
}

/* As ListLoads: the height, a line's width with each further character, and the same again to draw it. */
TEST(InfoLoads, TextsAreMeasuredAsOftenAsTold)
{
    const TestRoot no_glyphs;
    WidgetState state = {};
    EXPECT_EQ(loads([&] { drawInfo(1, nullptr, nullptr, "ab", &state, ACTION_ENTER); }), "a5 b1 a4 b1 a3 b1 a2 b2 ");
}
