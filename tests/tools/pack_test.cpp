#include "lang/language.h"
#include "lang/text_id.h"
#include "tests/tools/temp_folder.h"
#include "tools/composition.h"
#include "tools/glyph_files.h"
#include "tools/language_pack.h"
#include "tools/pack_compiler.h"
#include "tools/picture.h"
#include "tools/problems.h"
#include "tools/text_rooms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <utility>

using namespace std::string_literals;

static constexpr int LETTER_WIDTH = 4; // of every glyph here: n letters are 5 n - 1 pixels wide

static bool is_used(int number)
{
    return number != TEXT_UNUSED_2 && number != TEXT_UNUSED_107 && number != TEXT_UNUSED_115;
}

/* Glyphs of printable ASCII and the keys, and one that is too high. */
struct GlyphFolder : TempFolder {
    GlyphFolder()
    {
        for (char32_t c = 0x10; c < 0x7F; ++c)
            write(glyph_name(c, 1), bitmap_file(Picture(LETTER_WIDTH, GLYPH_HEIGHT)));
        write(glyph_name(U'ä', 1), bitmap_file(Picture(LETTER_WIDTH, GLYPH_HEIGHT + 1)));
    }
};

/* A pack one of whose texts is another than "tr". */
struct Case {
    const char *file;
    int number;
    std::string text;
    std::string message;      // "": none; "warning: ...": of a pack that is made all the same; else: of one that is not
    std::string english = ""; // "": as in the fixture
};

/* A template and a translation, valid until a test changes them. */
class Pack : public testing::Test
{
protected:
    Pack()
    {
        for (int number = 0; number < TEXT_COUNT; ++number) {
            if (is_used(number))
                entries[number] = entry(number, "tr");
        }
    }

    std::string entry(int number, const std::string &text)
    {
        const std::string name = std::to_string(number);
        const std::string id = ids.contains(number) ? ids[number] : "en" + name;
        return "msgctxt \"" + name + " role\"\nmsgid \"" + id + "\"\nmsgstr \"" + text + "\"\n";
    }

    std::optional<std::string> compile(const std::string &file)
    {
        static const GlyphFolder glyphs;
        const std::string header = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
        std::string original = header;
        std::string translation = header;
        for (const auto &[number, text] : entries) {
            original += entry(number, "");
            translation += text;
        }
        source = folder.write(file, translation).string();
        messages.str("");
        Problems problems(messages);
        return compile_pack(folder.write("panel.pot", original), source, glyphs / ".", problems);
    }

    /* The message is that of the entry's line. */
    void expect(const Case &c)
    {
        if (!c.english.empty())
            ids[c.number] = c.english;
        entries[c.number] = entry(c.number, c.text);
        const bool taken = c.message.empty() || c.message.starts_with("warning: ");
        EXPECT_EQ(compile(c.file).has_value(), taken) << c.file << ' ' << c.text;
        const auto line = 4 + 3 * std::distance(entries.begin(), entries.find(c.number));
        const std::string told = c.message.empty() ? "" : source + ':' + std::to_string(line) + ": " + c.message;
        EXPECT_TRUE(told.empty() ? messages.str().empty() : messages.str().find(told) != std::string::npos)
            << told << "\nnot in\n"
            << messages.str();
        ids.erase(c.number);
        entries[c.number] = entry(c.number, "tr");
    }

    const TempFolder folder;
    std::map<int, std::string> ids;     // English texts other than "en1"
    std::map<int, std::string> entries; // of the translation
    std::string source;
    std::ostringstream messages;
};

static std::string repeated(const std::string &text, int times)
{
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

TEST_F(Pack, HoldsTheTextsInTheirOrder)
{
    entries[0] = entry(0, "(empty)");
    ids[1] = "←→↕";
    entries[1] = entry(1, "→←↕ a\\\"b");
    entries[3] = "msgctxt \"3 role\"\nmsgid \"en3\"\nmsgstr \"\"\n\"two \"\n\"parts\"\n";
    entries[51] = entry(51, "line\\nand\\fa\\npage");
    std::swap(entries[148], entries[149]);

    const std::string pack = compile("de.po").value_or("");

    EXPECT_EQ(messages.str(), "");
    EXPECT_TRUE(pack.starts_with("\xEF\xBB\xBF\0\x10\x11\x12 a\"b\0\0two parts\0tr\0"s));
    EXPECT_NE(pack.find("\0line\nand\fa\npage\0"s), std::string::npos);
    EXPECT_TRUE(pack.ends_with("\0tr\0"s));
    EXPECT_EQ(std::ranges::count(pack, '\0'), TEXT_COUNT);
}

TEST_F(Pack, HoldsOnlyTextsThatCanBeShown)
{
    const std::string dots(300, '.'), misplaced = "has a line break or TAB where none can be";
    const Case cases[] = {
        {"de.po", 50, "", "not translated; a text that is empty on purpose is written (empty)"},
        {"de.po", 50, "é", "U+00E9 é has no glyph of 12 rows"},
        {"de.po", 50, "ä", "U+00E4 ä has no glyph of 12 rows"},
        {"de.po", 50, "😀", "U+1F600 😀 lies outside the Basic Multilingual Plane"},
        {"de.po", 50, "\\a", "U+0007 is a control character that the panel does not know"},
        {"de.po", 28, "a\\nb", "text 28 (\"a b\") " + misplaced},
        {"de.po", 28, dots, "text 28 (\"" + dots + "\") has 300 bytes, its buffer holds 299"},
        {"de.po", 32, "a\\tb", "text 32, 33 (\"a | b | tr\") " + misplaced, "a\\tb"}, // has a right part already
        {"de.po", 51, "a\\tb", "text 51 (\"a | b\") " + misplaced, "a\\tb"},
        {"de.po", 48, "tr", "lacks the ← of the English text", "Press ←"},
        {"de.po", 48, "←→", "has a → that the English text has not", "Press ←"},
        {"de.po", 48, "a\\tb", "has a TAB that the English text has not"},
        {"de.po", 48, "%s", "lacks the %d of the English text", "%d of %s"},
        {"de.po", 48, "%05.1lf", "has a %05.1lf that the English text has not", "100%"},
        {"de.po", 48, "100 % ← %d →", "", "→ %d ←"},
    };
    for (const Case &c : cases)
        expect(c);
}

/* Text 51 stands over a bottom line, text 38 does not. */
TEST_F(Pack, LaysPagesOutAsThePanelDoes)
{
    const std::string letters_25(25, 'w'); // as many as fit where a page is all there is
    const Case cases[] = {
        {"de.po", 51, "a\\nb\\nc\\nd", "text 51, page 1, row 3: nothing shows what follows, \"d\""},
        {"de.po", 51, "a\\nb\\nc\\nd e\\nf", ""},
        {"de.po", 38, "a\\nb\\nc\\nd", ""},
        {"kr.po", 51, "a\\nb\\nc", "text 51, page 1, row 2: nothing shows what follows, \"c\""},
        {"kr.po", 38, "a\\nb\\nc", ""},
        {"de.po", 51, "\\fgone", "text 51, page 1, row 1: nothing shows what follows, \"gone\""},

        {"de.po", 51, "a " + letters_25, ""},
        {"de.po", 51, "a " + letters_25 + "w",
         "text 51, page 1, row 1: nothing shows what follows, \"" + letters_25 +
             "w\", whose first word is 129 pixels wide: there is room for 117"},
        {"kr.po", 51, letters_25 + "w", "text 51, page 1, row 1: nothing shows what follows, "},
        {"jp.po", 51, letters_25 + letters_25, ""},
        {"de.po", 51, repeated("a\\n", 200), ""},
        {"de.po", 51, repeated("a\\n", 200) + "b",
         "text 51, page 67, row 2: nothing shows what follows, \"b\": there is room for 200 rows"},
        {"jp.po", 51, repeated("a b c\\f", 100) + "b", "text 51, page 100, row 2: nothing shows"},

        {"de.po", 51, letters_25 + ", w", "warning: text 51, page 1, row 2 begins with punctuation: \", w\""},
        {"de.po", 51, letters_25 + " , w", "warning: text 51, page 1, row 2 begins with punctuation"},
        {"jp.po", 51, letters_25 + "-) w", ""},
        {"jp.po", 51, letters_25 + ") w", "warning: text 51, page 1, row 2 begins with punctuation: \") w\""},

        {"de.po", 51, "a\\nb\\nc\\fd e", "warning: text 51, page 2, row 1 stands alone on its page: \"d e\""},
        {"de.po", 51, "a\\fb\\nc", "warning: text 51, page 1, row 1 stands alone on its page: \"a\""},
        {"de.po", 51, "a\\nb\\fc\\nd", ""},
        {"kr.po", 51, "a\\nb\\fc", "warning: text 51, page 2, row 1 stands alone on its page: \"c\""},
    };
    for (const Case &c : cases)
        expect(c);
}

TEST_F(Pack, RefusesTextsWiderThanTheirRoomUnlessTheyScroll)
{
    struct {
        const char *file;
        int number;
        std::size_t letters; // most that fit
        std::string message; // of one more, in the place of '@'
    } const cases[] = {
        {"de.po", 109, 7, "text 109 (\"@\") is 39 pixels wide, there is room for 35"},
        {"kr.po", 112, 16, "text 112 (\"@\") is 84 pixels wide, there is room for 81"},
        {"de.po", 22, 10, "text 22 (\"@ 30\") is 67 pixels wide, there is room for 64"},
        {"tc.po", 22, 16, "text 22, 146, 147, 26 (\"@tr30tr | tr\") is 128 pixels wide, there is room for 124"},
        {"kr.po", 145, 9, "text 145 (\"2026@\") is 69 pixels wide, there is room for 64"},
        {"de.po", 32, 23, "text 32, 34 (\"@ | tr\") is 133 pixels wide, there is room for 128"},
        {"de.po", 132, 21, "text 132 (\"@ | 2:00\") is 131 pixels wide, there is room for 128"},
        {"tc.po", 65, 21, "text 65, 69 (\"@ | ↕+tr\") is 132 pixels wide, there is room for 128"},
        {"de.po", 57, 23, "warning: text 57 (\"@\") is 119 pixels wide, there is room for 117"}, // beside a scroll bar
        {"de.po", 31, 25, "warning: text 31 (\"@\") is 129 pixels wide, there is room for 127"},
        {"kr.po", 31, 23, "warning: text 31 (\"@\") is 119 pixels wide, there is room for 117"}, // which they need
        {"de.po", 0, 11, "warning: text 0 (\"@.254\") is 77 pixels wide, there is room for 74"},
        {"jp.po", 0, 9, "warning: text 0 (\"@.254\") is 67 pixels wide, there is room for 64"},
    };
    for (const auto &c : cases) {
        const std::string letters(c.letters, 'w');
        std::string message = c.message;
        expect({c.file, c.number, letters, ""});
        expect({c.file, c.number, letters + 'w', message.replace(message.find('@'), 1, letters + 'w')});
    }
}

TEST_F(Pack, RefusesFilesThatAreNoTranslationsOfTheTemplate)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ": text 0 is missing; it is that of "}, // in the place of text 0, which begins in line 4
        {"#, fuzzy\n" + entry(0, "tr"), ":5: marked fuzzy"},
        {"msgctxt \"0 role\"\nmsgid \"old\"\nmsgstr \"tr\"\n",
         ":4: the template has the text \"en0\", here it is \"old\""},
        {"msgctxt \"0 label\"\nmsgid \"en0\"\nmsgstr \"tr\"\n", ":4: the template has the context \"0 role\""},
        {entry(0, "tr") + "msgctxt \"0 again\"\nmsgid \"en0\"\nmsgstr \"tr\"\n", ":7: text 0 stands already at "},
        {entry(0, "tr") + entry(107, "tr"), ":7: no text of a pack has the context \"107 role\""},
        {entry(0, "tr") + entry(150, "tr"), ":7: no text of a pack has the context \"150 role\""},
        {entry(0, "tr") + entry(0, "tr"), ":8: duplicate message definition"},
        {entry(0, "a\\0b"), ":6: a text cannot hold the character NUL"},
        {entry(0, "a\\\\\\x00"), ":6: a text cannot hold the character NUL"},
        {entry(0, "a\0b"s), ":6: a text cannot hold the character NUL"},
        {entry(0, "\xE4"), ":6: invalid multibyte sequence"},
        {"stray\n", ":4: keyword \"stray\" unknown"},
    };
    for (const auto &[first_entry, message] : cases) {
        entries[0] = first_entry;
        EXPECT_FALSE(compile("de.po")) << message;
        EXPECT_NE(messages.str().find(source + message), std::string::npos) << message << '\n' << messages.str();
    }
    entries[0] = entry(0, "\\\\0");
    entries[51] = entry(51, "a\\x0Az");
    EXPECT_TRUE(compile("de.po")) << messages.str();
    EXPECT_FALSE(compile("pl.po"));
    EXPECT_EQ(messages.str(), source + ": the panel has no language \"pl\"\n");
}

TEST(PackFile, HoldsAsMuchAsThePanelReads)
{
    std::ostringstream out;
    Problems problems(out);
    PackTexts texts;
    texts[51].text.assign(LANGUAGE_PACK_BYTES - TEXT_COUNT, 'a');
    EXPECT_EQ(pack_file("de.po", texts, problems).size(), LANGUAGE_PACK_BYTES + 3) << "the mark does not count";
    EXPECT_EQ(out.str(), "");
    texts[0].text = "b";
    pack_file("de.po", texts, problems);
    EXPECT_TRUE(out.str().starts_with("de.po: the texts take ")) << out.str();
}

TEST(TextRooms, EveryTextHasOneInEitherLayout)
{
    PackTexts texts;
    for (std::size_t number = 0; number < texts.size(); ++number)
        texts[number].text = "<" + std::to_string(number) + ">";
    std::string narrow;
    std::string wide;
    for (const TextRoom &room : text_rooms()) {
        for (const Composition &composition : compose(room.pattern, texts)) {
            narrow += room.narrow > 0 ? composition.text : "";
            wide += room.wide > 0 ? composition.text : "";
        }
    }
    for (int number = 0; number < TEXT_COUNT; ++number) {
        const std::string mark = "<" + std::to_string(number) + ">";
        EXPECT_EQ(narrow.find(mark) != std::string::npos, is_used(number)) << number;
        EXPECT_EQ(wide.find(mark) != std::string::npos, is_used(number)) << number;
    }
}
