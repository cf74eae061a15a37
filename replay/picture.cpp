#include "replay/picture.h"

#include "gfx/frame_buffer.h"

bool is_lit(const uint8_t *frame, int x, int y)
{
    /* The driver takes 0 for a drawn pixel, and the top row first. */
    return !(frame[(LCD_HEIGHT - 1 - y) * LCD_ROW_BYTES + x / 8] & 0x80 >> x % 8);
}

std::string text_art(const uint8_t *frame)
{
    std::string art;
    for (int y = LCD_HEIGHT - 1; y >= 0; y--) {
        for (int x = 0; x < LCD_WIDTH; x++)
            art += is_lit(frame, x, y) ? '#' : '.';
        art += '\n';
    }
    return art;
}
