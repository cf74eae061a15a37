#include "gallery/contact_sheet.h"

#include <cstdint>
#include <png.h>
#include <stdexcept>

static constexpr uint8_t INK = 20, PAPER = 215, GAP = 120;

struct Sheet {
    int width, height;
    std::vector<uint8_t> pixels;
};

static void put(Sheet &sheet, const Picture &picture, int left, int top)
{
    for (int y = 0; y < 64 * SHEET_SCALE; y++)
        for (int x = 0; x < 128 * SHEET_SCALE; x++) {
            const bool ink = picture[static_cast<size_t>(y / SHEET_SCALE)][static_cast<size_t>(x / SHEET_SCALE)] == '#';
            sheet.pixels[static_cast<size_t>(top + y) * static_cast<size_t>(sheet.width) +
                         static_cast<size_t>(left + x)] = ink ? INK : PAPER;
        }
}

void write_contact_sheet(const std::vector<Picture> &pictures, const std::string &path)
{
    const int count = static_cast<int>(pictures.size());
    const int rows = (count + SHEET_COLUMNS - 1) / SHEET_COLUMNS;
    Sheet sheet = {SHEET_COLUMNS * CELL_WIDTH + SHEET_GAP, rows * CELL_HEIGHT + SHEET_GAP, {}};
    sheet.pixels.assign(static_cast<size_t>(sheet.width) * static_cast<size_t>(sheet.height), GAP);
    for (int i = 0; i < count; i++)
        if (const Picture &picture = pictures[static_cast<size_t>(i)]; !picture.empty())
            put(sheet, picture, SHEET_GAP + i % SHEET_COLUMNS * CELL_WIDTH,
                SHEET_GAP + i / SHEET_COLUMNS * CELL_HEIGHT);

    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(sheet.width);
    image.height = static_cast<png_uint_32>(sheet.height);
    image.format = PNG_FORMAT_GRAY;
    if (!png_image_write_to_file(&image, path.c_str(), 0, sheet.pixels.data(), 0, nullptr))
        throw std::runtime_error(path + ": " + image.message);
}
