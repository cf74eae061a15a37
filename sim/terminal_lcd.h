/* The LCD's picture in the cells of a terminal. */
#pragma once

#include "sim/feed.h"

#include <span>
#include <string>

namespace sim {

constexpr unsigned LCD_WIDTH = 128, LCD_HEIGHT = 64; // pixels

/* How a cell shows several pixels. */
struct CellShape {
    unsigned width, height;           // pixels in a cell
    bool unicode;                     // it takes characters beyond ASCII
    wchar_t (*glyph)(unsigned drawn); // of a cell; bit y * width + x: that pixel is drawn

    int columns() const { return static_cast<int>(LCD_WIDTH / width); }
    int lines() const { return static_cast<int>(LCD_HEIGHT / height); }
};

/* All shapes, the most legible first. */
std::span<const CellShape> cell_shapes();

/* Line `line` (from 0, the top) of the picture. */
std::wstring lcd_line(const Pixels &pixels, const CellShape &shape, int line);

} // namespace sim
