/* What the cells of a terminal show, as pixels. */
#pragma once

#include "sim/text.h"

#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

/* The characters of a line in UTF-8. */
inline std::vector<std::string> characters(std::string_view line)
{
    std::vector<std::string> list;
    for (size_t length; (length = sim::character_length(line)) > 0; line.remove_prefix(length))
        list.emplace_back(line.substr(0, length));
    return list;
}

/* The drawn pixels of a cell of 2 x 4, "12345678": left column from the top, then the right one; nothing when the
 * character is none that shows pixels. */
inline std::optional<std::string> pixels_of(const std::string &cell)
{
    static const std::map<std::string, std::string> blocks = {
        {" ", ""},       {"▀", "1256"},   {"▄", "3478"},   {"█", "12345678"}, {"▌", "1234"},   {"▐", "5678"},
        {"▖", "34"},     {"▗", "78"},     {"▘", "12"},     {"▝", "56"},       {"▙", "123478"}, {"▚", "1278"},
        {"▛", "123456"}, {"▜", "125678"}, {"▞", "3456"},   {"▟", "345678"},
    };
    if (const auto block = blocks.find(cell); block != blocks.end())
        return block->second;
    /* Braille is U+2800 and a bit for each dot, of which the last two are the lowest row. */
    if (cell.size() != 3 || cell[0] != '\xe2')
        return std::nullopt;
    const unsigned dots = (static_cast<unsigned>(cell[1]) & 3) << 6 | (static_cast<unsigned>(cell[2]) & 0x3f);
    std::string drawn;
    for (unsigned dot = 0; dot < 8; ++dot)
        if (dots >> dot & 1)
            drawn += "12356748"[dot];
    return drawn;
}

/* The picture that a terminal's text shows within a frame of `columns` x `lines` cells at its upper left, as the 1024
 * bytes of GET /frame; "" when it shows none. */
inline std::string decoded_picture(const std::string &text, unsigned columns, unsigned lines)
{
    const unsigned width = 128 / columns, height = 64 / lines; // pixels in a cell
    std::string picture(1024, '\xff');
    std::istringstream rows(text);
    std::string row;
    std::getline(rows, row); // the frame
    for (unsigned line = 0; line < lines; ++line) {
        std::getline(rows, row);
        const auto cells = characters(row);
        for (unsigned column = 0; column < columns; ++column) {
            const auto drawn = column + 1 < cells.size() ? pixels_of(cells[column + 1]) : std::nullopt;
            if (!drawn)
                return "";
            for (const char part : *drawn) {
                const unsigned index = static_cast<unsigned>(part - '1');
                const unsigned x = column * width + index / 4 * width / 2;
                const unsigned y = line * height + index % 4 * height / 4;
                picture[y * 16 + x / 8] &= static_cast<char>(~(0x80 >> x % 8));
            }
        }
    }
    return picture;
}
