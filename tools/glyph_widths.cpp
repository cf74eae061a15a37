#include "tools/glyph_widths.h"

#include <array>
#include <cstdio>
#include <fstream>

bool is_break_character(char32_t c)
{
    static constexpr std::u32string_view characters = U" ,.:-\x12\x11\x10/'_&!;[]`|";
    return characters.find(c) != std::u32string_view::npos;
}

std::string glyph_name(char32_t c, int font)
{
    std::array<char, 24> name;
    std::snprintf(name.data(), name.size(), "U_%04X", static_cast<unsigned>(c));
    std::string result = name.data();
    if (font != 1)
        result += '_' + std::to_string(font);
    return result;
}

std::optional<int> GlyphWidths::glyph(char32_t c)
{
    const auto [entry, is_new] = widths_.try_emplace(c);
    if (!is_new)
        return entry->second;
    std::ifstream in(folder_ / glyph_name(c, 1), std::ios::binary);
    std::array<unsigned char, 4> size{};
    in.read(reinterpret_cast<char *>(size.data()), size.size());
    if (in && (size[2] << 8 | size[3]) == GLYPH_HEIGHT)
        entry->second = size[0] << 8 | size[1];
    return entry->second;
}

int GlyphWidths::text(std::u32string_view text)
{
    constexpr int letter_spacing = 1;
    int width = 0;
    bool last_breaks = true;
    for (const char32_t c : text) {
        const bool breaks = is_break_character(c);
        width += glyph(c).value_or(0) + (breaks || last_breaks ? 0 : letter_spacing);
        last_breaks = breaks;
    }
    return width;
}
