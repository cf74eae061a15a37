#include "lang/language.h"
#include "lang/text_id.h"
#include "tests/tools/temp_folder.h"
#include "tools/composition.h"
#include "tools/glyph_files.h"
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

/* A template, a translation and glyphs, all valid until a test changes them. */
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

    static void SetUpTestSuite()
    {
        glyphs = new TempFolder;
        for (char32_t c = 0x10; c < 0x7F; ++c) {
            if (c >= U' ' || c <= 0x12)
                add_glyph(c);
        }
        add_glyph(U'ä', GLYPH_HEIGHT + 1);
    }

    static void TearDownTestSuite() { delete glyphs; }

    static void add_glyph(char32_t c, int height = GLYPH_HEIGHT)
    {
        glyphs->write(glyph_name(c, 1), bitmap_file(Picture(LETTER_WIDTH, height)));
    }

    std::string entry(int number, const std::string &text)
    {
        const std::string name = std::to_string(number);
        const std::string id = ids.contains(number) ? ids[number] : "en" + name;
        return "msgctxt \"" + name + " role\"\nmsgid \"" + id + "\"\nmsgstr \"" + text + "\"\n";
    }

    std::optional<std::string> compile(const std::string &file)
    {
        std::string original = HEADER;
        std::string translation = HEADER;
        for (int number = 0; number < TEXT_COUNT; ++number) {
            original += is_used(number) ? entry(number, "") : "";
            translation += entries[number];
        }
        source = folder.write(file, translation).string();
        messages.str("");
        Problems problems(messages);
        return compile_pack(folder.write("panel.pot", original), source, *glyphs / ".", problems);
    }

    /* Refused, with `message` for the line of the last entry of text `number`. */
    void expect_refusal(const std::string &file, int number, const std::string &message)
    {
        EXPECT_FALSE(compile(file)) << message;
        const std::string text = read_file(source);
        const auto entry_start = static_cast<long>(text.rfind("msgctxt \"" + std::to_string(number) + ' '));
        const auto line = 1 + std::count(text.begin(), text.begin() + entry_start, '\n');
        const std::string expected = source + ':' + std::to_string(line) + ": " + message;
        EXPECT_NE(messages.str().find(expected), std::string::npos) << expected << "\nnot in\n" << messages.str();
    }

    static constexpr const char *HEADER = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";

    static inline TempFolder *glyphs;
    TempFolder folder;
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

TEST_F(Pack, OfTheTemplateHoldsItsOwnTexts)
{
    compile("de.po");
    std::ostringstream out;
    Problems problems(out);
    const auto pack = compile_pack(folder / "panel.pot", "", *glyphs / ".", problems);
    EXPECT_TRUE(pack.value_or("").starts_with("\xEF\xBB\xBF"
                                              "en0\0en1\0\0en3\0"s))
        << out.str();
}

TEST_F(Pack, RefusesTextsThatCannotBeShown)
{
    struct Case {
        const char *file;
        int number;
        std::string text;
        std::string message;
    };
    const std::string dots(300, '.');
    const Case cases[] = {
        {"de.po", 50, "", "not translated; a text that is empty on purpose is written (empty)"},
        {"de.po", 50, "é", "U+00E9 é has no glyph of 12 rows"},
        {"de.po", 50, "ä", "U+00E4 ä has no glyph of 12 rows"},
        {"de.po", 50, "😀", "U+1F600 😀 lies outside the Basic Multilingual Plane"},
        {"de.po", 50, "\\a", "U+0007 is a control character that the panel does not know"},
        {"de.po", 28, "a\\nb", "text 28 (\"a b\") has a line break or TAB where none can be"},
        {"de.po", 28, dots, "text 28 (\"" + dots + "\") has 300 bytes, its buffer holds 299"},
    };
    for (const Case &c : cases) {
        const std::string valid = std::exchange(entries[c.number], entry(c.number, c.text));
        expect_refusal(c.file, c.number, c.message);
        entries[c.number] = valid;
    }
}

TEST_F(Pack, RefusesTabsWhereTheTemplateMayHaveNone)
{
    for (const int number : {32, 51}) { // a title that has a right part already, a page
        ids[number] = "a\\tb";
        const std::string valid = std::exchange(entries[number], entry(number, "a\\tb"));
        expect_refusal("de.po", number, "text " + std::to_string(number));
        EXPECT_NE(messages.str().find("has a line break or TAB where none can be"), std::string::npos);
        entries[number] = valid;
        ids.erase(number);
    }
}

/* Text 51 stands over a bottom line, text 38 does not. */
TEST_F(Pack, LaysPagesOutAsThePanelDoes)
{
    struct Case {
        const char *file;
        int number;
        std::string text;
        bool fits;
        std::string message; // "": none
    };
    const std::string letters_23(23, 'w'); // as many as fit beside a scroll bar
    const std::string letters_25(25, 'w'); // as many as fit where a page is all there is
    const Case cases[] = {
        {"de.po", 51, "a\\nb\\nc\\nd", false, "text 51, page 1, row 3: nothing shows what follows, \"d\""},
        {"de.po", 51, "a\\nb\\nc\\nd e\\nf", true, ""},
        {"de.po", 38, "a\\nb\\nc\\nd", true, ""},
        {"kr.po", 51, "a\\nb\\nc", false, "text 51, page 1, row 2: nothing shows what follows, \"c\""},
        {"kr.po", 38, "a\\nb\\nc", true, ""},
        {"de.po", 51, "\\fgone", false, "text 51, page 1, row 1: nothing shows what follows, \"gone\""},

        {"de.po", 51, "a " + letters_25, true, ""},
        {"de.po", 51, "a " + letters_25 + "w", false,
         "text 51, page 1, row 1: nothing shows what follows, \"" + letters_25 +
             "w\", whose first word is 129 pixels wide: there is room for 117"},
        {"kr.po", 51, letters_25 + "w", false, "text 51, page 1, row 1: nothing shows what follows, "},
        {"jp.po", 51, letters_25 + letters_25, true, ""},
        {"de.po", 51, repeated("a\\n", 200), true, ""},
        {"de.po", 51, repeated("a\\n", 200) + "b", false,
         "text 51, page 67, row 2: nothing shows what follows, \"b\": there is room for 200 rows"},
        {"jp.po", 51, repeated("a b c\\f", 100) + "b", false, "text 51, page 100, row 2: nothing shows"},

        {"de.po", 51, letters_25 + ", w", true, "text 51, page 1, row 2 begins with punctuation: \", w\""},
        {"de.po", 51, letters_25 + " , w", true, "text 51, page 1, row 2 begins with punctuation"},
        {"jp.po", 51, letters_25 + "-) w", true, ""},
        {"jp.po", 51, letters_25 + ") w", true, "text 51, page 1, row 2 begins with punctuation: \") w\""},

        {"de.po", 51, "a\\nb\\nc\\fd e", true, "text 51, page 2, row 1 stands alone on its page: \"d e\""},
        {"de.po", 51, "a\\fb\\nc", true, "text 51, page 1, row 1 stands alone on its page: \"a\""},
        {"de.po", 51, "a\\nb\\fc\\nd", true, ""},
        {"kr.po", 51, "a\\nb\\fc", true, "text 51, page 2, row 1 stands alone on its page: \"c\""},
    };
    for (const Case &c : cases) {
        const std::string valid = std::exchange(entries[c.number], entry(c.number, c.text));
        EXPECT_EQ(compile(c.file).has_value(), c.fits) << c.text;
        if (c.message.empty())
            EXPECT_EQ(messages.str(), "") << c.text;
        else
            EXPECT_NE(messages.str().find((c.fits ? ": warning: " : ": ") + c.message), std::string::npos)
                << c.message << "\nnot in\n"
                << messages.str();
        entries[c.number] = valid;
    }
}

TEST_F(Pack, RefusesTextsWiderThanTheirRoom)
{
    struct Case {
        const char *file;
        int number;
        int letters;       // most that fit
        std::string shown; // one letter more, as it is refused
        int width;
        int room;
    };
    const Case cases[] = {
        {"de.po", 109, 7, "text 109 (\"@\")", 39, 35},
        {"kr.po", 112, 16, "text 112 (\"@\")", 84, 81},
        {"de.po", 114, 8, "text 114 (\"@\")", 44, 40},
        {"de.po", 22, 10, "text 22 (\"@ 30\")", 67, 64},
        {"tc.po", 22, 16, "text 22, 146, 147, 26 (\"@tr30tr | tr\")", 128, 124},
        {"kr.po", 145, 9, "text 145 (\"2026@\")", 69, 64},
        {"de.po", 32, 23, "text 32, 34 (\"@ | tr\")", 133, 128},
        {"de.po", 132, 21, "text 132 (\"@ | 2:00\")", 131, 128},
        {"de.po", 50, 21, "text 50, 69 (\"@ | ↕+tr\")", 132, 128},
        {"tc.po", 65, 21, "text 65, 69 (\"@ | ↕+tr\")", 132, 128},
    };
    for (const Case &c : cases) {
        const std::string letters(static_cast<std::size_t>(c.letters), 'w');
        const std::string valid = std::exchange(entries[c.number], entry(c.number, letters));
        EXPECT_TRUE(compile(c.file)) << messages.str();
        entries[c.number] = entry(c.number, letters + 'w');
        std::string message = c.shown;
        message.replace(message.find('@'), 1, letters + 'w');
        message += " is " + std::to_string(c.width) + " pixels wide, there is room for " + std::to_string(c.room);
        expect_refusal(c.file, c.number, message);
        entries[c.number] = valid;
    }
}

TEST_F(Pack, LetsTextsScrollWhereTheyCan)
{
    entries[57] = entry(57, std::string(24, 'w')); // an item beside a scroll bar
    entries[31] = entry(31, std::string(25, 'w')); // one of three items: only the wide languages need the bar
    EXPECT_TRUE(compile("de.po"));
    EXPECT_NE(messages.str().find(": warning: text 57 "), std::string::npos);
    EXPECT_EQ(messages.str().find("text 31"), std::string::npos);
    EXPECT_TRUE(compile("kr.po"));
    EXPECT_NE(messages.str().find("text 31"), std::string::npos);

    entries[0] = entry(0, std::string(10, 'w')); // ".254" follows; the list of the wide languages has a bar
    EXPECT_TRUE(compile("de.po"));
    EXPECT_EQ(messages.str().find("text 0 "), std::string::npos);
    EXPECT_TRUE(compile("jp.po"));
    EXPECT_NE(messages.str().find(": warning: text 0 "), std::string::npos);
}

TEST_F(Pack, RefusesKeysAndFormatsThatDifferFromTheTemplate)
{
    struct Case {
        const char *english;
        const char *text;
        const char *message;
    };
    const Case cases[] = {
        {"Press ←", "tr", "lacks the ← of the English text"},
        {"Press ←", "←→", "has a → that the English text has not"},
        {"Title", "a\\tb", "has a TAB that the English text has not"},
        {"%d of %s", "%s", "lacks the %d of the English text"},
        {"100%", "%05.1lf", "has a %05.1lf that the English text has not"},
    };
    for (const Case &c : cases) {
        ids[48] = c.english;
        entries[48] = entry(48, c.text);
        expect_refusal("de.po", 48, c.message);
    }
    ids[48] = "→ %d ←";
    entries[48] = entry(48, "100 % ← %d →");
    EXPECT_TRUE(compile("de.po")) << messages.str();
}

TEST_F(Pack, RefusesLanguagesThatThePanelDoesNotKnow)
{
    EXPECT_FALSE(compile("pl.po"));
    EXPECT_EQ(messages.str(), source + ": the panel has no language \"pl\"\n");
}

TEST_F(Pack, RefusesEntriesThatAreNotThoseOfTheTemplate)
{
    struct Case {
        std::string entry; // in the place of that of text 50
        int number;        // of the text that is refused
        std::string message;
    };
    const Case cases[] = {
        {"#, fuzzy\n" + entry(50, "tr"), 50, "marked fuzzy"},
        {"msgctxt \"50 role\"\nmsgid \"old\"\nmsgstr \"tr\"\n", 50,
         "the template has the text \"en50\", here it is \"old\""},
        {"msgctxt \"50 label\"\nmsgid \"en50\"\nmsgstr \"tr\"\n", 50, "the template has the context \"50 role\""},
        {entry(50, "tr") + "msgctxt \"50 again\"\nmsgid \"en50\"\nmsgstr \"tr\"\n", 50, "text 50 stands already at "},
        {entry(50, "tr") + entry(107, "tr"), 107, "no text of a pack has the context \"107 role\""},
        {entry(50, "tr") + entry(150, "tr"), 150, "no text of a pack has the context \"150 role\""},
    };
    for (const Case &c : cases) {
        entries[50] = c.entry;
        expect_refusal("de.po", c.number, c.message);
    }
}

TEST_F(Pack, RefusesFilesThatAreNoTranslations)
{
    struct Case {
        std::string entry; // in the place of that of text 0, which begins in line 4
        std::string message;
    };
    const Case cases[] = {
        {"", ": text 0 is missing; it is that of "},
        {entry(0, "tr") + entry(0, "tr"), ":8: duplicate message definition"},
        {entry(0, "a\\0b"), ":6: a text cannot hold the character NUL"},
        {entry(0, "a\\\\\\x00"), ":6: a text cannot hold the character NUL"},
        {entry(0, "a\0b"s), ":6: a text cannot hold the character NUL"},
        {entry(0, "\xE4"), ":6: invalid multibyte sequence"},
        {"stray\n", ":4: keyword \"stray\" unknown"},
    };
    for (const Case &c : cases) {
        entries[0] = c.entry;
        EXPECT_FALSE(compile("de.po")) << c.message;
        EXPECT_NE(messages.str().find(source + c.message), std::string::npos) << c.message << '\n' << messages.str();
    }
    entries[0] = entry(0, "\\\\0");
    entries[51] = entry(51, "a\\x0Az");
    EXPECT_TRUE(compile("de.po")) << messages.str();
}

TEST_F(Pack, RefusesMoreTextThanThePanelHolds)
{
    std::size_t room = LANGUAGE_PACK_BYTES - compile("de.po").value_or("").size() + 3; // the mark does not count
    for (const int number : {51, 52, 54}) {
        const std::size_t added = std::min<std::size_t>(room, 3000);
        entries[number] = entry(number, "tr" + std::string(added, ' '));
        room -= added;
    }
    EXPECT_EQ(compile("de.po").value_or("").size(), LANGUAGE_PACK_BYTES + 3) << messages.str();
    entries[54] = entry(54, "tr" + std::string(3000, ' '));
    EXPECT_FALSE(compile("de.po"));
    EXPECT_NE(messages.str().find(source + ": the texts take "), std::string::npos) << messages.str();
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
