#include "gfx/bitmap.h"

#include "core/file.h"
#include "gfx/frame_buffer.h"
#include "lang/language.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

constexpr std::string_view BITMAP_DIRECTORY = "/sbin/lcd_ml/_auto_bitmap_/";
constexpr size_t PATH_BYTES = 152;
constexpr size_t HEADER_BYTES = 4;
constexpr size_t FIRST_READ_BYTES = HEADER_BYTES + LCD_HEIGHT * LCD_ROW_BYTES; // a picture as large as the screen

/* What stands in for a missing picture */
static uint8_t narrowRows[] = {0x00, 0x00, 0x00, 0x70, 0x70, 0x70, 0x70, 0x70, 0x70, 0x00, 0x00, 0x00};
static Bitmap narrowMissingGlyph = {5, sizeof narrowRows, narrowRows, sizeof narrowRows};
static uint8_t wideRows[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                             0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
static Bitmap wideMissingGlyph = {12, sizeof wideRows / 2, wideRows, sizeof wideRows / 2};

static size_t rowBytes(size_t width)
{
    return (width + 7) / 8;
}

/* Writes the path of the picture `name`. False when it does not fit; it is cut then. */
static bool makePath(char (&path)[PATH_BYTES], const char *name)
{
    char *end = std::copy(BITMAP_DIRECTORY.begin(), BITMAP_DIRECTORY.end(), path);
    while (*name != '\0' && end < path + PATH_BYTES - 1)
        *end++ = static_cast<char>(toupper(static_cast<unsigned char>(*name++)));
    *end = '\0';
    return *name == '\0';
}

/* Makes `bitmap` (null: a new one) a block with room for `bytes` bytes of rows behind the record. Null when memory does
 * not suffice; the old block is then gone. */
static Bitmap *resize(Bitmap *bitmap, size_t bytes)
{
    auto *resized = static_cast<Bitmap *>(realloc(bitmap, sizeof(Bitmap) + bytes));
    if (resized)
        resized->bits = reinterpret_cast<uint8_t *>(resized + 1);
    else
        free(bitmap);
    return resized;
}

/* Reads on behind the `*size` bytes of rows at hand until `wanted` are there or the file ends. The block grows with
 * what is read: a header may claim anything. Null when memory does not suffice. */
static Bitmap *readOn(const File &file, Bitmap *bitmap, size_t *size, size_t wanted)
{
    const size_t padding = rowBytes(bitmap->width);
    bool ended = false;
    while (bitmap && !ended && *size < wanted) {
        const size_t room = std::min(*size, wanted - *size);
        bitmap = resize(bitmap, *size + room + padding);
        if (bitmap) {
            const size_t got = file.read_full(bitmap->bits + *size, room);
            *size += got;
            ended = got < room;
        }
    }
    return bitmap;
}

/* The bitmap of an open file; null when memory does not suffice. */
static Bitmap *readBitmap(const File &file)
{
    /* One read takes all of any picture that the screen can show. */
    uint8_t start[FIRST_READ_BYTES];
    const size_t got = static_cast<size_t>(std::max<ssize_t>(file.read(start, sizeof start), 0));
    if (got < HEADER_BYTES)
        memset(start + got, 0xFF, HEADER_BYTES - got); // a missing byte reads as the end of file does
    const auto width = static_cast<uint16_t>(start[0] << 8 | start[1]);
    const auto height = static_cast<uint16_t>(start[2] << 8 | start[3]);
    const size_t bytesPerRow = rowBytes(width);
    const size_t claimed = bytesPerRow * height;
    size_t size = std::min(std::max(got, HEADER_BYTES) - HEADER_BYTES, claimed);

    Bitmap *bitmap = resize(nullptr, size + bytesPerRow);
    if (bitmap) {
        bitmap->width = width;
        bitmap->height = height;
        memcpy(bitmap->bits, start + HEADER_BYTES, size);
        if (got == sizeof start)
            bitmap = readOn(file, bitmap, &size, claimed);
    }
    if (bitmap) {
        const size_t rows = bytesPerRow == 0 ? 0 : (size + bytesPerRow - 1) / bytesPerRow;
        memset(bitmap->bits + size, 0, rows * bytesPerRow - size);
        bitmap->rows = static_cast<uint32_t>(rows);
    }
    return bitmap;
}

/* The picture called `name`; null when it is missing or memory does not suffice, which is reported. */
static Bitmap *findBitmap(const char *name)
{
    char path[PATH_BYTES];
    if (makePath(path, name)) {
        const File file(path);
        if (file) {
            Bitmap *bitmap = readBitmap(file);
            if (!bitmap)
                printf("memory allocate failed for %s file name %s\n", name, path);
            return bitmap;
        }
    }
    printf("no bitmap for %s file name %s\n", name, path);
    return nullptr;
}

Bitmap *loadBitmap(const char *name)
{
    Bitmap *bitmap = findBitmap(name);
    if (!bitmap)
        bitmap = is_wide_language() ? &wideMissingGlyph : &narrowMissingGlyph;
    return bitmap;
}

void freeBitmap(Bitmap *bitmap)
{
    if (bitmap != &narrowMissingGlyph && bitmap != &wideMissingGlyph)
        free(bitmap);
}

void drawBitmap(int mode, int x, int y, int height, int width, const uint8_t *bits)
{
    const size_t bytesPerRow = rowBytes(static_cast<size_t>(std::max(width, 0)));
    for (int row = height - 1; row >= 0; row--)
        drawBits(mode, x, static_cast<int>(int64_t{y} - 1 - row), width, bits + bytesPerRow * static_cast<size_t>(row));
}

void LoadedBitmap::draw(int mode, int x, int y) const
{
    drawBitmap(mode, x, y, static_cast<int>(bitmap_->rows), width(), bitmap_->bits);
}

void drawFigure(int mode, int x, int y, const char *name)
{
    LoadedBitmap(name).draw(mode, x, y);
}
