/* Pictures and glyphs: one-bit bitmap files, read at every use. */
#pragma once

#include <cstdint>

struct Bitmap {
    uint16_t width;  // pixels
    uint16_t height; // pixels
    uint8_t *bits;   // rows of (width + 7) / 8 bytes, the top row first, the most significant bit leftmost; may be null
    uint32_t rows;   // rows that `bits` holds; those missing from a short file are blank
};

/* Loads the picture called `name`. Never null: a picture that is missing, or that memory does not suffice for, is
 * reported on standard output and one of two built-in blocks stands in. Release it with freeBitmap. */
Bitmap *loadBitmap(const char *name);

/* Releases a loaded bitmap; null and the built-in blocks are left alone. */
void freeBitmap(Bitmap *bitmap);

/* Applies the set bits of `bits` with `mode`: columns from x, rows from y - 1 downwards. Pixels off the screen are
 * refused one by one as drawDot does. */
void drawBitmap(int mode, int x, int y, int height, int width, const uint8_t *bits);

/* Draws the picture called `name` as drawBitmap does. */
void drawFigure(int mode, int x, int y, const char *name);

/* A bitmap loaded for the time of a scope. */
class LoadedBitmap
{
public:
    explicit LoadedBitmap(const char *name) : bitmap_(loadBitmap(name)) {}
    ~LoadedBitmap() { freeBitmap(bitmap_); }
    LoadedBitmap(const LoadedBitmap &) = delete;
    LoadedBitmap &operator=(const LoadedBitmap &) = delete;

    int width() const { return bitmap_->width; }
    int height() const { return bitmap_->height; }

    /* Draws it as drawBitmap does; rows that a short file lacks are blank. */
    void draw(int mode, int x, int y) const;

private:
    Bitmap *bitmap_;
};
