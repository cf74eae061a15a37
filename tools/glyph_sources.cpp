#include "tools/glyph_sources.h"

#include "tools/glyph_cells.h"
#include "tools/glyph_files.h"
#include "tools/problems.h"

#include <algorithm>
#include <cstdlib>

namespace fs = std::filesystem;

namespace
{
struct FontFile {
    FontId id;
    const char *file;
    const char *package;
};
} // namespace

static constexpr FontFile font_files[] = {
    {FontId::LATIN, "misc/mplus_h10r.pcf.gz", "xfonts-mplus"},
    {FontId::LATIN_9, "misc/mplus_h10r-euro.pcf.gz", "xfonts-mplus"},
    {FontId::LATIN_EXTENDED, "75dpi/helvR08.pcf.gz", "xfonts-75dpi"},
    {FontId::ASIAN, "misc/b12.pcf.gz", "xfonts-efont-unicode"},
    {FontId::CHINESE, "misc/wenquanyi_9pt.pcf", "xfonts-wqy"},
    {FontId::HANGUL, "misc/12x13ja.pcf.gz", "xfonts-base"},
    {FontId::DIGITS_2, "75dpi/helvB18.pcf.gz", "xfonts-75dpi"},
    {FontId::DIGITS_3, "75dpi/helvR24.pcf.gz", "xfonts-75dpi"},
};

/* The file says that it is ISO 8859-1, but these codes are those of ISO 8859-15. */
static constexpr std::pair<char32_t, char32_t> latin_9_codes[] = {
    {U'€', 0xA4}, {U'Š', 0xA6}, {U'š', 0xA8}, {U'Ž', 0xB4}, {U'ž', 0xB8}, {U'Œ', 0xBC}, {U'œ', 0xBD}, {U'Ÿ', 0xBE},
};

GlyphSources::GlyphSources(const fs::path &fonts, const fs::path &own, bool with_chinese, Problems &problems)
    : to_japanese_("EUC-JP", "UTF-8")
{
    for (const FontFile &font : font_files) {
        if (font.id == FontId::CHINESE && !with_chinese)
            continue;
        const fs::path file = fonts / font.file;
        if (fs::exists(file))
            sources_.emplace(font.id, Source{font.package, BitmapFont(file)});
        else
            problems.error(file, std::string("missing; the Debian package ") + font.package + " brings it");
    }
    read_own_glyphs(own, problems);
}

/* The code point in "U_0010"; nothing when the name is none. */
static std::optional<char32_t> named_code_point(const std::string &name)
{
    const unsigned long value = name.size() > 2 ? std::strtoul(name.c_str() + 2, nullptr, 16) : 0;
    const auto c = static_cast<char32_t>(value);
    return glyph_name(c, 1) == name ? std::optional(c) : std::nullopt;
}

void GlyphSources::read_own_glyphs(const fs::path &folder, Problems &problems)
{
    for (const fs::path &file : text_art_files(folder)) {
        const std::optional<char32_t> c = named_code_point(bitmap_name(file));
        const std::optional<Picture> picture = read_text_art(file, problems);
        if (!c)
            problems.error(file, "the name of a glyph's drawing is u_ and four hexadecimal digits");
        else if (picture && picture->height() != GLYPH_HEIGHT)
            problems.error(file, "a glyph is " + std::to_string(GLYPH_HEIGHT) + " rows high");
        else if (picture)
            own_.emplace(*c, *picture);
    }
}

std::optional<FontGlyph> GlyphSources::take(FontId id, char32_t code)
{
    const auto found = sources_.find(id);
    if (found == sources_.end())
        return std::nullopt;
    std::optional<FontGlyph> glyph = found->second.font.glyph(code);
    if (glyph)
        packages_.insert(found->second.package);
    return glyph;
}

std::optional<FontGlyph> GlyphSources::latin_glyph(char32_t c)
{
    if (c < 0x100)
        return take(FontId::LATIN, c);
    const auto latin_9 = std::ranges::find(latin_9_codes, c, &std::pair<char32_t, char32_t>::first);
    if (latin_9 != std::end(latin_9_codes))
        return take(FontId::LATIN_9, latin_9->second);
    const bool extended = c < 0x250 || (c >= 0x2010 && c < 0x2040) || c == U'™';
    return extended ? take(FontId::LATIN_EXTENDED, c) : std::nullopt;
}

/* Characters that Japanese has keep their Japanese shapes. */
std::optional<FontGlyph> GlyphSources::east_asian_glyph(char32_t c)
{
    constexpr std::size_t jis_x_0208_bytes = 2;
    const bool han = c >= 0x3400 && c < 0xA000;
    if (han && to_japanese_.convert(encode_utf8({&c, 1})).value_or("").size() != jis_x_0208_bytes) {
        if (std::optional<FontGlyph> glyph = take(FontId::CHINESE, c))
            return glyph;
    }
    if (std::optional<FontGlyph> glyph = take(FontId::ASIAN, c))
        return glyph;
    return take(FontId::HANGUL, c);
}

std::optional<Picture> GlyphSources::text_glyph(char32_t c)
{
    constexpr int blank_width = 4;
    constexpr int no_break_blank_width = 2;
    if (const auto own = own_.find(c); own != own_.end())
        return own->second;
    if (c == U' ')
        return Picture(blank_width, GLYPH_HEIGHT);
    if (c == 0xA0)
        return Picture(no_break_blank_width, GLYPH_HEIGHT);
    if (std::optional<FontGlyph> glyph = latin_glyph(c))
        return latin_cell(c, *glyph);
    if (std::optional<FontGlyph> glyph = east_asian_glyph(c))
        return east_asian_cell(c, *glyph);
    return std::nullopt;
}

std::map<char32_t, Picture> GlyphSources::large_glyphs(int font)
{
    const FontId source = font == 2 ? FontId::DIGITS_2 : FontId::DIGITS_3;
    const int side = font - 1; // blank columns on each side of point and colon
    std::map<char32_t, FontGlyph> glyphs;
    int width = 0;
    for (const char32_t c : std::u32string_view(U"0123456789.:")) {
        if (std::optional<FontGlyph> glyph = take(source, c))
            glyphs.emplace(c, *glyph);
    }
    for (char32_t c = U'0'; c <= U'9'; ++c)
        width = std::max(width, glyphs.at(c).ink.width());
    const int height = glyphs.at(U'0').ink.height();

    std::map<char32_t, Picture> cells;
    for (const auto &[c, glyph] : glyphs)
        cells.emplace(c, c >= U'0' && c <= U'9' ? digit_cell(glyph, width, height) : mark_cell(glyph, side, height));
    /* As wide as the colon that it stands in for when the clock blinks. */
    cells.emplace(U' ', Picture(cells.at(U':').width(), height));
    return cells;
}
