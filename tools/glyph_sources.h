/* Where the panel's glyphs come from: own drawings and the bitmap fonts of Debian's packages. */
#pragma once

#include "tools/bitmap_font.h"
#include "tools/charset.h"

#include <map>
#include <set>
#include <string>

class Problems;

constexpr int LARGE_FONTS[] = {2, 3}; // fonts of large digits

enum class FontId { LATIN, LATIN_9, LATIN_EXTENDED, ASIAN, CHINESE, HANGUL, DIGITS_2, DIGITS_3 };

class GlyphSources
{
public:
    /* Reads the own drawings in `own` and opens the font files below `fonts`; what is missing is reported. Without the
     * font of Chinese characters no glyph is under the GPL. */
    GlyphSources(const std::filesystem::path &fonts, const std::filesystem::path &own, bool with_chinese,
                 Problems &problems);

    /* The glyph of a character in font 1; nothing when no source has it. */
    std::optional<Picture> text_glyph(char32_t c);

    /* The glyphs of a large font: ten digits, point, colon and blank. */
    std::map<char32_t, Picture> large_glyphs(int font);

    /* The characters that are drawn by hand. */
    const std::map<char32_t, Picture> &own_glyphs() const { return own_; }

    /* The packages that glyphs were taken from. */
    const std::set<std::string> &packages() const { return packages_; }

private:
    struct Source {
        std::string package;
        BitmapFont font;
    };

    std::optional<FontGlyph> take(FontId id, char32_t code);
    std::optional<FontGlyph> latin_glyph(char32_t c);
    std::optional<FontGlyph> east_asian_glyph(char32_t c);
    void read_own_glyphs(const std::filesystem::path &folder, Problems &problems);

    std::map<FontId, Source> sources_;
    std::map<char32_t, Picture> own_;
    std::set<std::string> packages_;
    Converter to_japanese_;
};
