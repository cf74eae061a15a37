#include "gfx/frame_buffer.h"

#include <cstdio>
#include <cstring>

constexpr int BITS = 8; // pixels of a byte

/* The picture */
uint8_t screenBuffer[LCD_HEIGHT * LCD_ROW_BYTES];

/* The byte that holds a pixel of the screen. */
static uint8_t *byteOf(int x, int y)
{
    return screenBuffer + (LCD_HEIGHT - 1 - y) * LCD_ROW_BYTES + x / BITS;
}

static bool isSet(const uint8_t *bits, int column)
{
    return (bits[column / BITS] & 0x80 >> column % BITS) != 0;
}

/* Applies `mode` to the pixels of one byte whose bits are set in `mask`. */
static void applyMask(int mode, uint8_t *byte, int mask)
{
    if (mode == DRAW_NORMAL)
        *byte = static_cast<uint8_t>(*byte | mask);
    else if (mode == DRAW_REVERSE)
        *byte = static_cast<uint8_t>(*byte ^ mask);
}

/* Applies `mode` to every pixel of a rectangle that is on the screen. */
static void applyRectangle(int mode, int x, int y, int height, int width)
{
    uint8_t solid[LCD_ROW_BYTES];
    memset(solid, 0xFF, sizeof solid);
    for (int row = y - height + 1; row <= y; row++)
        drawBits(mode, x, row, width, solid);
}

bool isOnScreen(int64_t x, int64_t y, int64_t height, int64_t width)
{
    const int64_t right = x + width - 1;
    const int64_t bottom = y - height + 1;
    return x >= 0 && x < LCD_WIDTH && y >= 0 && y < LCD_HEIGHT && right >= 0 && right < LCD_WIDTH && bottom >= 0 &&
           bottom < LCD_HEIGHT;
}

void drawDot(int mode, int x, int y)
{
    if (!isOnScreen(x, y, 1, 1)) {
        printf("drawDot return, x %d, y %d\n", x, y);
        return;
    }
    applyMask(mode, byteOf(x, y), 0x80 >> x % BITS);
}

int getDot(int x, int y)
{
    return !isOnScreen(x, y, 1, 1) || isSet(byteOf(0, y), x);
}

void clearScreenBuffer()
{
    fillScreenBuffer(0);
}

void fillScreenBuffer(int value)
{
    memset(screenBuffer, value, sizeof screenBuffer);
}

int drawRectangle(int x, int y, int height, int width)
{
    if (isOnScreen(x, y, height, width))
        applyRectangle(DRAW_NORMAL, x, y, height, width);
    else
        printf("drawRectangle return, x %d, y %d, width %d, height %d\n", x, y, width, height);
    return 0;
}

int drawLine(int x, int y, int length)
{
    return drawRectangle(x, y, 1, length);
}

void setReverseDisplay(int x, int y, int height, int width)
{
    if (isOnScreen(x, y, height, width))
        applyRectangle(DRAW_REVERSE, x, y, height, width);
}

void drawBits(int mode, int x, int y, int width, const uint8_t *bits)
{
    if (!isOnScreen(x, y, 1, width)) {
        /* A column beyond an int wraps around and stays off the screen. */
        for (int column = 0; column < width; column++)
            if (isSet(bits, column))
                drawDot(mode, static_cast<int>(int64_t{x} + column), y);
        return;
    }
    const int shift = x % BITS;
    uint8_t *byte = byteOf(x, y);
    for (int left = width; left > 0; left -= BITS, bits++, byte++) {
        const int mask = left < BITS ? *bits & 0xFF00 >> left : *bits;
        applyMask(mode, byte, mask >> shift);
        /* What is shifted out of a row's last byte is nothing, and the byte behind it belongs to the next row. */
        if (const int rest = mask << (BITS - shift) & 0xFF)
            applyMask(mode, byte + 1, rest);
    }
}
