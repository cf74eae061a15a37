#include "sim/terminal_lcd.h"

namespace sim {

static constexpr unsigned BYTE_BITS = 8, ROW_BYTES = LCD_WIDTH / BYTE_BITS;

static wchar_t half_block(unsigned drawn)
{
    return L" ▀▄█"[drawn];
}

static wchar_t quarter_block(unsigned drawn)
{
    return L" ▘▝▀▖▌▞▛▗▚▐▜▄▙▟█"[drawn];
}

/* Unicode counts a cell's dots column by column, but the two of the lowest row last. */
static wchar_t braille(unsigned drawn)
{
    static constexpr unsigned dots[] = {0x01, 0x08, 0x02, 0x10, 0x04, 0x20, 0x40, 0x80};
    unsigned character = 0x2800;
    for (unsigned pixel = 0; pixel < std::size(dots); ++pixel)
        if (drawn >> pixel & 1)
            character |= dots[pixel];
    return static_cast<wchar_t>(character);
}

static wchar_t half_sign(unsigned drawn)
{
    return L" '.:"[drawn];
}

static constexpr CellShape shapes[] = {
    {1, 2, true, half_block},
    {1, 2, false, half_sign},
    {2, 2, true, quarter_block},
    {2, 4, true, braille},
};

std::span<const CellShape> cell_shapes()
{
    return shapes;
}

static bool is_drawn(const Pixels &pixels, unsigned x, unsigned y)
{
    return (pixels[y * ROW_BYTES + x / BYTE_BITS] >> (BYTE_BITS - 1 - x % BYTE_BITS) & 1) == 0;
}

std::wstring lcd_line(const Pixels &pixels, const CellShape &shape, int line)
{
    std::wstring cells;
    for (unsigned left = 0; left < LCD_WIDTH; left += shape.width) {
        unsigned drawn = 0;
        for (unsigned pixel = 0; pixel < shape.width * shape.height; ++pixel) {
            const unsigned y = static_cast<unsigned>(line) * shape.height + pixel / shape.width;
            drawn |= static_cast<unsigned>(is_drawn(pixels, left + pixel % shape.width, y)) << pixel;
        }
        cells += shape.glyph(drawn);
    }
    return cells;
}

} // namespace sim
