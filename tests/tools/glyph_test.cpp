#include "lang/language.h"
#include "tests/tools/temp_folder.h"
#include "tools/charset.h"
#include "tools/glyph_compiler.h"
#include "tools/glyph_files.h"
#include "tools/glyph_sets.h"
#include "tools/problems.h"
#include "tools/trial_panel.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace std::string_literals;

/* Glyphs made from the fonts of this machine, once for all tests. */
class Glyphs : public testing::Test
{
protected:
    /* Makes `set` and the characters of `text` into the folder called `set`. */
    static GlyphJob job(const std::string &set, const std::string &text)
    {
        const std::string entry = "msgctxt \"1 a\"\nmsgid \"" + text + "\"\nmsgstr \"\"\n";
        return {.set = set,
                .texts = {folder->write("texts.pot", HEADER + entry).string()},
                .own = SOURCE_DIR "/assets/glyphs",
                .fonts = "/usr/share/fonts/X11",
                .with_chinese = true,
                .output = *folder / set,
                .notice = *folder / (set + ".notice")};
    }

    static std::string make(const GlyphJob &job)
    {
        std::ostringstream out;
        Problems problems(out);
        compile_glyphs(job, problems);
        return out.str();
    }

    static void SetUpTestSuite()
    {
        folder = new TempFolder;
        ASSERT_EQ(make(job("base", TEXT)), "");
    }

    static void TearDownTestSuite() { delete folder; }

    /* A glyph as text art of the rows that have ink. */
    static std::string drawing(char32_t c, int font = 1)
    {
        const std::string file = read_file(*folder / "base" / glyph_name(c, font));
        const int width = static_cast<unsigned char>(file.at(1));
        std::string art;
        for (std::size_t at = 4; at < file.size(); at += static_cast<std::size_t>((width + 7) / 8)) {
            std::string row;
            for (int column = 0; column < width; ++column)
                row += file.at(at + static_cast<std::size_t>(column / 8)) & 0x80 >> column % 8 ? '#' : '.';
            art += row + '\n';
        }
        return art;
    }

    static constexpr const char *TEXT = "中文、ｱ寬直\u3000↕\\n";
    static inline const std::string HEADER = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
    static inline TempFolder *folder;
};

TEST_F(Glyphs, MakeTextsOfTheWidthsThatTheScreensAreLaidOutFor)
{
    struct Case {
        const char *text;
        int width;
    };
    const Case cases[] = {{"255.255.255.255", 77},
                          {"00:1F:33:8A:5F:2A", 81},
                          {"Wednesday", 49},
                          {"September 30", 61},
                          {"septiembre 30", 62},
                          {"Total", 22},
                          {"1", 5},
                          {".", 3},
                          {":", 3},
                          {",", 4},
                          {"-", 7},
                          {"/", 6},
                          {"_", 7},
                          {" ", 4},
                          {"\u00A0", 2},
                          {"\u3000", 11},
                          {"‘", 2},
                          {"„", 5},
                          {"\x10", 9},
                          {"中文", 23},
                          {"ｱ", 5}};
    const TrialPanel panel("en", "\xEF\xBB\xBF" + std::string(TEXT_COUNT, '\0'), *folder / "base");
    for (const Case &c : cases)
        EXPECT_EQ(panel.width(c.text), c.width) << c.text;
}

TEST_F(Glyphs, StandInTheirCells)
{
    struct Case {
        char32_t c;
        int font;
        const char *drawing;
    };
    const Case cases[] = {
        {U'A', 1, ".....\n.....\n..#..\n..#..\n.#.#.\n.#.#.\n#####\n#...#\n#...#\n.....\n.....\n.....\n"},
        {U'1', 1, ".....\n.....\n...#.\n..##.\n.#.#.\n...#.\n...#.\n...#.\n...#.\n.....\n.....\n.....\n"},
        {U'.', 1, "...\n...\n...\n...\n...\n...\n...\n...\n.#.\n...\n...\n...\n"},
        {U'€', 1, ".....\n.....\n..##.\n.#..#\n####.\n.#...\n####.\n.#..#\n..##.\n.....\n.....\n.....\n"},
        {U'ſ', 1, "....\n....\n..##\n.#..\n.#..\n##..\n.#..\n.#..\n.#..\n....\n....\n....\n"},
        {U'、', 1,
         "...........\n...........\n...........\n...........\n...........\n...........\n...........\n"
         "...........\n...........\n.#.........\n..#........\n..#........\n"},
        {U'é', 1, "....\n..#.\n.#..\n....\n.##.\n#..#\n####\n#...\n.###\n....\n....\n....\n"},
        {U'É', 1, "...#.\n..#..\n.....\n#####\n#....\n####.\n#....\n#....\n#####\n.....\n.....\n.....\n"},
        {U'å', 1, ".##.\n#..#\n.##.\n....\n.##.\n...#\n.###\n#..#\n.###\n....\n....\n....\n"},
        {U'.', 2, ".....\n.....\n.....\n.....\n.....\n.....\n.....\n.....\n.....\n.....\n.###.\n.###.\n.###.\n"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(drawing(c.c, c.font), c.drawing) << glyph_name(c.c, c.font);
}

TEST_F(Glyphs, OfLargeFontsAreDigitsPointColonAndBlank)
{
    struct Case {
        int font;
        std::string digit; // width and height
        std::string mark;
    };
    const Case cases[] = {{2, "\0\x09\0\x0D"s, "\0\x05\0\x0D"s}, {3, "\0\x0B\0\x12"s, "\0\x06\0\x12"s}};
    for (const auto &[font, digit, mark] : cases) {
        for (const char32_t c : std::u32string_view(U"0123456789.: ")) {
            const std::string name = glyph_name(c, font);
            const std::string size = read_file(*folder / "base" / name).substr(0, 4);
            EXPECT_EQ(size, c >= U'0' && c <= U'9' ? digit : mark) << name;
        }
        EXPECT_FALSE(std::filesystem::exists(*folder / "base" / glyph_name(U'-', font)));
    }
}

TEST_F(Glyphs, ComeFromTheFontThatDrawsThemBest)
{
    GlyphJob plain = job("packs", TEXT);
    plain.with_chinese = false;
    ASSERT_EQ(make(plain), "");
    const auto differs = [&plain](char32_t c) {
        return read_file(*folder / "base" / glyph_name(c, 1)) != read_file(plain.output / glyph_name(c, 1));
    };
    EXPECT_TRUE(differs(U'寬'));  // Chinese alone
    EXPECT_FALSE(differs(U'直')); // Japanese too: keeps its Japanese shape
    EXPECT_EQ(read_file(plain.notice).find("xfonts-wqy"), std::string::npos);
}

TEST(GlyphSets, HoldWhatTheyAreFor)
{
    struct Case {
        const char *set;
        std::u32string_view holds;
        std::u32string_view lacks;
    };
    const Case cases[] = {
        {"packs", U" ~", U"é\n\x7F"},
        {"base", U" ~\u00A0ſȘț‘„…€™", U"ǅ\x80一"},
        {"asia", U"é、ァンㄅㄱＡｱ一籲亜腕가힝", U"뷁丂"}, // ends of the level 1 tables among them
        {"full", U"é亜뷁힣丂龥", U"㐀"},
    };
    for (const Case &c : cases) {
        const std::set<char32_t> set = glyph_set(c.set);
        for (const char32_t character : c.holds)
            EXPECT_TRUE(set.contains(character)) << c.set << ' ' << character_name(character);
        for (const char32_t character : c.lacks)
            EXPECT_FALSE(set.contains(character)) << c.set << ' ' << character_name(character);
    }
}

TEST_F(Glyphs, AreMadeForEveryTextAndKey)
{
    const std::filesystem::path base = *folder / "base";
    for (const char32_t c : std::u32string_view(U"\x10\x11\x12中‘„é"))
        EXPECT_TRUE(has_glyph(base, c)) << character_name(c);
    EXPECT_TRUE(has_glyph(base, 0)); // what cannot be decoded
    EXPECT_FALSE(has_glyph(base, U'\n') || has_glyph(base, U'↕'));
}

TEST_F(Glyphs, ComeWithTheLicencesOfTheirFonts)
{
    const std::string notice = read_file(*folder / "base.notice");
    const char *const parts[] = {"xfonts-mplus, copyright", "xfonts-75dpi, copyright",   "README.baekmuk",
                                 "README.shinonome",        "source package xfonts-wqy", "Adobe Systems"};
    for (const char *const part : parts)
        EXPECT_NE(notice.find(part), std::string::npos) << part;
}

TEST_F(Glyphs, AreNotMadeWithoutTheirSources)
{
    GlyphJob wrong = job("packs", "");
    wrong.fonts = *folder / "no-fonts";
    EXPECT_NE(make(wrong).find("misc/b12.pcf.gz: missing; the Debian package xfonts-efont-unicode brings it"),
              std::string::npos);

    wrong = job("packs", "\U0001F600");
    EXPECT_NE(make(wrong).find("texts.pot:4: no font has a glyph for U+1F600"), std::string::npos);

    wrong = job("packs", "");
    wrong.own = *folder / "own";
    folder->write("own/u_0010.txt", "###\n");
    folder->write("own/arrow.txt", "###\n");
    const std::string messages = make(wrong);
    EXPECT_NE(messages.find("u_0010.txt: a glyph is 12 rows high"), std::string::npos);
    EXPECT_NE(messages.find("arrow.txt: the name of a glyph's drawing is"), std::string::npos);
}
