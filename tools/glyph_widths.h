/* Widths of texts in font 1, from the glyph files, as the panel measures them. */
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

constexpr int GLYPH_HEIGHT = 12; // rows of every glyph of font 1

/* Whether the panel puts no letter spacing beside `c` and may break a line after it. */
bool is_break_character(char32_t c);

/* The name of the bitmap that is the glyph of `c` in `font` (1..3). */
std::string glyph_name(char32_t c, int font);

class GlyphWidths {
public:
    /* The glyph files are in `folder`. */
    explicit GlyphWidths(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /* The width of a glyph in pixels; nothing when there is none, or none of GLYPH_HEIGHT rows. */
    std::optional<int> glyph(char32_t c);

    /* The width of a text in pixels; glyphs that are missing count as nothing. */
    int text(std::u32string_view text);

private:
    std::filesystem::path folder_;
    std::unordered_map<char32_t, std::optional<int>> widths_;
};
