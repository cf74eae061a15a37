#include "gfx/frame_buffer.h"
#include "replay/picture.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <png.h>
#include <vector>

static constexpr int SCALE = 4;
static constexpr uint8_t BLACK = 0, WHITE = 255;

static std::vector<uint8_t> enlarge(const uint8_t *frame)
{
    std::vector<uint8_t> pixels;
    for (int row = 0; row < LCD_HEIGHT * SCALE; row++)
        for (int column = 0; column < LCD_WIDTH * SCALE; column++)
            pixels.push_back(is_lit(frame, column / SCALE, LCD_HEIGHT - 1 - row / SCALE) ? BLACK : WHITE);
    return pixels;
}

std::string write_png(const uint8_t *frame, const std::string &path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = LCD_WIDTH * SCALE;
    image.height = LCD_HEIGHT * SCALE;
    image.format = PNG_FORMAT_GRAY;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<char> bytes(size);
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, enlarge(frame).data(), 0, nullptr))
        return image.message;
    std::ofstream file(path, std::ios::binary);
    if (file.write(bytes.data(), static_cast<std::streamsize>(size)).flush())
        return "";
    std::string reason = strerror(errno);
    /* No half of a picture stays behind; a device does. */
    std::error_code error;
    if (file.is_open() && std::filesystem::is_regular_file(path, error))
        std::filesystem::remove(path, error);
    return reason;
}
