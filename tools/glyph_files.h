/* The glyph files of the panel. */
#pragma once

#include <filesystem>
#include <string>

constexpr int GLYPH_HEIGHT = 12; // rows of every glyph of font 1

/* Whether the panel puts no letter spacing beside `c` and may break a line after it. */
bool is_break_character(char32_t c);

/* The name of the bitmap that is the glyph of `c` in `font` (1..3). */
std::string glyph_name(char32_t c, int font);

/* Whether `folder` has a glyph of `c` in font 1, of GLYPH_HEIGHT rows. */
bool has_glyph(const std::filesystem::path &folder, char32_t c);
