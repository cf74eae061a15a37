/* Bitmap files: drawn anywhere, their pixels are those that the file's bytes name, and no other pixel changes. */
#include "gfx/bitmap.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/frame_buffer.h"

#include <algorithm>
#include <cstring>

static constexpr size_t HEADER_BYTES = 4;

/* Applies the file's pixels to `screen` one by one. */
static void draw(const std::string &file, int mode, int x, int y, uint8_t *screen)
{
    const auto byte = [&](size_t i) { return i < file.size() ? static_cast<uint8_t>(file[i]) : i < 4 ? 0xFF : 0; };
    const int width = byte(0) << 8 | byte(1), height = byte(2) << 8 | byte(3);
    const size_t row_bytes = static_cast<size_t>(width + 7) / 8;
    for (int row = std::max(0, y - LCD_HEIGHT); row < std::min(height, y); row++) {
        for (int column = std::max(0, -x); column < std::min(width, LCD_WIDTH - x); column++) {
            const size_t at = HEADER_BYTES + static_cast<size_t>(row) * row_bytes + static_cast<size_t>(column) / 8;
            if (!(byte(at) & 0x80 >> column % 8))
                continue;
            uint8_t &pixels = screen[(LCD_HEIGHT - y + row) * LCD_ROW_BYTES + (x + column) / 8];
            const int bit = 0x80 >> (x + column) % 8;
            if (mode == DRAW_NORMAL)
                pixels = static_cast<uint8_t>(pixels | bit);
            else if (mode == DRAW_REVERSE)
                pixels = static_cast<uint8_t>(pixels ^ bit);
        }
    }
}

void fuzz(Input &in)
{
    FuzzRouter router;
    const int mode = in.number(0, 3), x = in.number(-120, 135), y = in.number(-10, 245);
    const int background = in.number(0, 255);
    const std::string file = in.rest();
    router.files["/sbin/lcd_ml/_auto_bitmap_/PICTURE_1"] = file;

    uint8_t expected[sizeof screenBuffer];
    fillScreenBuffer(background);
    memcpy(expected, screenBuffer, sizeof expected);
    draw(file, mode, x, y, expected);
    drawFigure(mode, x, y, "picture_1");
    require(memcmp(screenBuffer, expected, sizeof expected) == 0, "the picture is that of the file");
}
