#include "tools/glyph_files.h"

#include "gfx/glyph.h"
#include "gfx/utf8.h"

#include <array>
#include <cstdio>
#include <fstream>

bool is_break_character(char32_t c)
{
    const Utf8Char character = {{static_cast<char>(c)}, 1};
    return c < 0x80 && isBreakCharacter(&character) != 0;
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

bool has_glyph(const std::filesystem::path &folder, char32_t c)
{
    std::ifstream in(folder / glyph_name(c, 1), std::ios::binary);
    std::array<unsigned char, 4> size{};
    in.read(reinterpret_cast<char *>(size.data()), size.size());
    return in && (size[2] << 8 | size[3]) == GLYPH_HEIGHT;
}
