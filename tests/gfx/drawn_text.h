/* Texts as they stand on the screen. */
#pragma once

#include "gfx/frame_buffer.h"
#include "tests/gfx/glyph_root.h"

/* The glyphs of a GlyphRoot in the columns `from` to `to` of the line with top edge `y`, '~' for more than one column
 * between two. An inverted line stands in brackets. */
inline std::string read_line(int y, int from = 1, int to = LCD_WIDTH - 1)
{
    const bool inverted = getDot(from, y - 11) == 1;
    const auto column = [&](int x) {
        int bits = 0;
        for (int row = y - 1; row >= y - 8; row--)
            bits = bits * 2 + ((getDot(x, row) == 1) != inverted);
        return bits;
    };
    std::string text;
    int end = to; // of the glyph before
    for (int x = from; x < to; x++) {
        if (column(x) != 0xFF)
            continue;
        if (x > end + 1)
            text += '~';
        text += static_cast<char>(column(x + 1));
        x += 4;
        end = x + 1;
    }
    return inverted ? "[" + text + "]" : text;
}

/* The three rows between a widget's title and bottom line, up to the scroll bar or another column. */
inline std::string read_rows(int to = 117)
{
    return read_line(49, 1, to) + "|" + read_line(37, 1, to) + "|" + read_line(25, 1, to);
}
