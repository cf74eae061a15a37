#include "tools/glyph_compiler.h"

#include "tools/glyph_files.h"
#include "tools/glyph_sets.h"
#include "tools/glyph_sources.h"
#include "tools/notice.h"
#include "tools/output.h"
#include "tools/panel_text.h"
#include "tools/po_file.h"
#include "tools/problems.h"

static constexpr const char *DOCUMENTS = "/usr/share/doc";
static constexpr int BLOCK_KIB = 4; // of the file systems that give each file a block of its own

/* Where each character was met first; "" for one that may go without a glyph. */
using Characters = std::map<char32_t, std::string>;

static void add_text(Characters &characters, const std::string &text, const std::string &place, Problems &problems)
{
    const std::optional<std::u32string> decoded = decode_utf8(panel_text(text));
    if (!decoded)
        problems.error(place, "the text is not UTF-8");
    for (const char32_t c : decoded.value_or(U"")) {
        if (NEVER_DRAWN.find(c) == std::u32string_view::npos)
            characters.emplace(c, place);
    }
}

/* The characters of the texts and of the glyphs drawn by hand. */
static Characters needed_characters(const GlyphJob &job, GlyphSources &sources, Problems &problems)
{
    Characters characters;
    for (const std::string &file : job.texts) {
        for (const PoEntry &entry : read_po_file(file, problems)) {
            add_text(characters, entry.id, entry.place, problems);
            add_text(characters, entry.text, entry.place, problems);
        }
    }
    for (const auto &[c, picture] : sources.own_glyphs())
        characters.emplace(c, "");
    return characters;
}

static Characters with_set(Characters characters, const std::set<char32_t> &set)
{
    for (const char32_t c : set)
        characters.emplace(c, "");
    return characters;
}

static void write_text_glyphs(const Characters &characters, GlyphSources &sources, OutputFolder &output,
                              Problems &problems)
{
    for (const auto &[c, place] : characters) {
        if (const std::optional<Picture> picture = sources.text_glyph(c))
            output.write(glyph_name(c, 1), bitmap_file(*picture));
        else if (!place.empty())
            problems.error(place, "no font has a glyph for " + character_name(c));
    }
}

static void write_large_glyphs(GlyphSources &sources, OutputFolder &output)
{
    for (const int font : LARGE_FONTS) {
        for (const auto &[c, picture] : sources.large_glyphs(font))
            output.write(glyph_name(c, font), bitmap_file(picture));
    }
}

/* What a set takes on flash, in one line. */
static std::string set_size(std::string_view set, const Characters &characters, GlyphSources &sources)
{
    size_t files = 0, bytes = 0;
    const auto add = [&](const Picture &picture) {
        files++;
        bytes += bitmap_file(picture).size();
    };
    for (const auto &[c, place] : characters)
        if (const std::optional<Picture> picture = sources.text_glyph(c))
            add(*picture);
    for (const int font : LARGE_FONTS)
        for (const auto &[c, picture] : sources.large_glyphs(font))
            add(picture);
    return std::string(set) + ": " + std::to_string(files) + " glyph files, " + std::to_string(bytes) + " bytes; " +
           std::to_string(files * BLOCK_KIB) + " KiB where each file takes a block of " + std::to_string(BLOCK_KIB) +
           " KiB\n";
}

std::string compile_glyphs(const GlyphJob &job, Problems &problems)
{
    const std::set<char32_t> set = glyph_set(job.set);
    GlyphSources sources(job.fonts, job.own, job.with_chinese, problems);
    if (problems.failed())
        return "";
    const Characters needed = needed_characters(job, sources, problems);
    OutputFolder output(job.output);
    write_text_glyphs(with_set(needed, set), sources, output, problems);
    write_large_glyphs(sources, output);
    const std::string notice = job.notice.empty() ? "" : notice_text(sources.packages(), DOCUMENTS, problems);
    if (problems.failed())
        return "";
    if (!job.notice.empty())
        write_file(job.notice, notice);
    output.replace();
    std::string sizes;
    for (const std::string_view name : GLYPH_SETS)
        sizes += set_size(name, with_set(needed, glyph_set(name)), sources);
    return sizes + "built: " + job.set + '\n';
}
