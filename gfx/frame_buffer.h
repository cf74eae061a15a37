/* The off-screen picture of the LCD and its pixel operations.
 *
 * x runs 0..127 from the left, y 0..63 from the bottom row up. Rectangles are given by their top-left pixel: columns
 * x .. x + width - 1, rows y - height + 1 .. y. Arguments off the screen are refused with a message on standard output,
 * never an error. */
#pragma once

#include <cstdint>

constexpr int LCD_WIDTH = 128;
constexpr int LCD_HEIGHT = 64;
constexpr int LCD_ROW_BYTES = LCD_WIDTH / 8;

enum DrawMode {
    DRAW_NORMAL = 1,  // sets pixels
    DRAW_REVERSE = 2, // inverts pixels; any other mode leaves them alone
};

/* 64 rows of 16 bytes, the top row first, the most significant bit leftmost; 1 is a drawn pixel. */
extern uint8_t screenBuffer[LCD_HEIGHT * LCD_ROW_BYTES];

/* Applies `mode` to one pixel. */
void drawDot(int mode, int x, int y);

/* 1 when the pixel is set, and for every position off the screen; else 0. */
int getDot(int x, int y);

/* Clears every pixel. */
void clearScreenBuffer();

/* Sets every byte of the picture to the low byte of `value`. */
void fillScreenBuffer(int value);

/* Sets all pixels of a rectangle; refused whole when any of it lies off the screen. 0. */
int drawRectangle(int x, int y, int height, int width);

/* A horizontal line of `length` pixels to the right from (x, y): a rectangle one pixel high. 0. */
int drawLine(int x, int y, int length);

/* Inverts all pixels of a rectangle; refused whole, without a message, when any of it lies off the screen. */
void setReverseDisplay(int x, int y, int height, int width);

/* Applies `mode` to the set bits of `bits`, the most significant one first: `width` pixels of row y from column x on.
 * Pixels off the screen are refused one by one as drawDot does. */
void drawBits(int mode, int x, int y, int width, const uint8_t *bits);

/* Whether the top-left and the bottom-right pixel of a rectangle are on the screen, its extent being 0 or less
 * included. */
bool isOnScreen(int64_t x, int64_t y, int64_t height, int64_t width);
