#include "tests/tools/temp_folder.h"
#include "tools/charset.h"
#include "tools/glyph_compiler.h"
#include "tools/glyph_files.h"
#include "tools/glyph_sets.h"
#include "tools/problems.h"

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

/* Glyphs made from the fonts of this machine. */
class Glyphs : public testing::Test
{
protected:
    /* Makes `set` and the characters of `text` into the folder called `set`. */
    GlyphJob job(const std::string &set, const std::string &text) const
    {
        const std::string header = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
        const std::string entry = "msgctxt \"1 a\"\nmsgid \"" + text + "\"\nmsgstr \"\"\n";
        return {.set = set,
                .texts = {folder.write("texts.pot", header + entry).string()},
                .own = SOURCE_DIR "/assets/glyphs",
                .fonts = "/usr/share/fonts/X11",
                .with_chinese = true,
                .output = folder / set,
                .notice = folder / (set + ".notice")};
    }

    static std::string make(const GlyphJob &job)
    {
        std::ostringstream out;
        Problems problems(out);
        compile_glyphs(job, problems);
        return out.str();
    }

    const TempFolder folder;
};

/* A glyph as text art of the rows that have ink. */
static std::string drawing(const std::filesystem::path &folder, char32_t c)
{
    const std::string file = read_file(folder / glyph_name(c, 1));
    const auto width = static_cast<std::size_t>(file.at(1));
    std::string art;
    for (std::size_t at = 4; at < file.size(); at += (width + 7) / 8) {
        std::string row;
        for (std::size_t column = 0; column < width; ++column)
            row += file.at(at + column / 8) & 0x80 >> column % 8 ? '#' : '.';
        art += row.find('#') == row.npos ? "" : row + '\n';
    }
    return art;
}

TEST_F(Glyphs, ComeFromTheFontThatDrawsThemBest)
{
    const std::string text = "中、寬直↕\\n";
    const GlyphJob base = job("base", text);
    GlyphJob plain = job("packs", text);
    plain.with_chinese = false;
    ASSERT_EQ(make(base) + make(plain), "");

    EXPECT_EQ(drawing(base.output, U'€'), "..##.\n.#..#\n####.\n.#...\n####.\n.#..#\n..##.\n");
    EXPECT_EQ(drawing(base.output, U'ſ'), "..##\n.#..\n.#..\n##..\n.#..\n.#..\n.#..\n");
    EXPECT_EQ(drawing(base.output, U'、'), ".#.........\n..#........\n..#........\n");
    EXPECT_NE(drawing(base.output, U'寬'), drawing(plain.output, U'寬')); // Chinese alone
    EXPECT_EQ(drawing(base.output, U'直'), drawing(plain.output, U'直')); // Japanese too: keeps its Japanese shape
    for (const char32_t c : std::u32string_view(U"\0\x10\x11\x12中‘„é", 8))
        EXPECT_TRUE(has_glyph(base.output, c)) << character_name(c);
    EXPECT_FALSE(has_glyph(base.output, U'\n') || has_glyph(base.output, U'↕'));

    const std::string notice = read_file(base.notice);
    const char *const parts[] = {"xfonts-mplus, copyright", "xfonts-75dpi, copyright",   "README.baekmuk",
                                 "README.shinonome",        "source package xfonts-wqy", "Adobe Systems"};
    for (const char *const part : parts)
        EXPECT_NE(notice.find(part), std::string::npos) << part;
    EXPECT_EQ(read_file(plain.notice).find("xfonts-wqy"), std::string::npos);
}

TEST(GlyphSets, HoldWhatTheyAreFor)
{
    const std::tuple<const char *, std::u32string_view, std::u32string_view> cases[] = {
        {"packs", U" ~", U"é\n\x7F"},
        {"base", U" ~\u00A0ſȘț‘„…€™", U"ǅ\x80一"},
        {"asia", U"é、ァンㄅㄱＡｱ一籲亜腕가힝", U"뷁丂"}, // ends of the level 1 tables among them
        {"full", U"é亜뷁힣丂龥", U"㐀"},
    };
    for (const auto &[name, holds, lacks] : cases) {
        const std::set<char32_t> set = glyph_set(name);
        for (const char32_t c : holds)
            EXPECT_TRUE(set.contains(c)) << name << ' ' << character_name(c);
        for (const char32_t c : lacks)
            EXPECT_FALSE(set.contains(c)) << name << ' ' << character_name(c);
    }
}

TEST_F(Glyphs, AreNotMadeWithoutTheirSources)
{
    GlyphJob wrong = job("packs", "");
    wrong.fonts = folder / "no-fonts";
    EXPECT_NE(make(wrong).find("misc/b12.pcf.gz: missing; the Debian package xfonts-efont-unicode brings it"),
              std::string::npos);

    wrong = job("packs", "\U0001F600");
    EXPECT_NE(make(wrong).find("texts.pot:4: no font has a glyph for U+1F600"), std::string::npos);

    wrong.own = folder / "own";
    folder.write("own/u_0010.txt", "###\n");
    folder.write("own/arrow.txt", "###\n");
    const std::string messages = make(wrong);
    EXPECT_NE(messages.find("u_0010.txt: a glyph is 12 rows high"), std::string::npos);
    EXPECT_NE(messages.find("arrow.txt: the name of a glyph's drawing is"), std::string::npos);
}
