#include "sim/picture_files.h"

#include "gfx/frame_buffer.h"

#include <algorithm>
#include <array>
#include <gif_lib.h>
#include <memory>
#include <png.h>
#include <stdexcept>
#include <utility>

namespace sim {

struct Colour {
    uint8_t red, green, blue;
};

/* Indices of a palette: a pixel that is not drawn, a drawn one, and the gaps: beside either and between two drawn. */
enum Shade : uint8_t { OFF, ON, GLASS, BETWEEN, SHADES_OF_A_LIGHT, SHADES = 2 * SHADES_OF_A_LIGHT };

using Palette = std::array<Colour, SHADES>; // lit, then dark

static constexpr Palette plain_palette = {{{255, 255, 255}, {0, 0, 0}}};
/* As the page draws it. */
static constexpr Palette lcd_palette = {
    {{0xba, 0xc7, 0xa3}, {0x1b, 0x24, 0x16}, {0xc2, 0xcf, 0xac}, {0x5a, 0x66, 0x4c},
     {0x36, 0x3d, 0x34}, {0x20, 0x26, 0x1e}, {0x3a, 0x41, 0x38}, {0x2a, 0x30, 0x28}}};

static constexpr unsigned SMALLEST_WITH_GAPS = 3; // scale: below it a gap would be half of a dot

static const Palette &palette_of(Look look)
{
    return look == Look::LCD ? lcd_palette : plain_palette;
}

static bool is_drawn(const Pixels &pixels, unsigned column, unsigned row)
{
    return column < LCD_WIDTH && row < LCD_HEIGHT && !(pixels[row * LCD_ROW_BYTES + column / 8] & 0x80 >> column % 8);
}

/* The shade of a gap right of or below a pixel, or both. */
static Shade gap_shade(const Pixels &pixels, unsigned column, unsigned row, bool right, bool below)
{
    for (const unsigned x : {column, column + right})
        for (const unsigned y : {row, row + below})
            if (!is_drawn(pixels, x, y))
                return GLASS;
    return BETWEEN;
}

/* The file's pixels, row by row, as shades. */
static std::vector<uint8_t> shades_of(const Picture &picture, Look look, unsigned scale)
{
    const bool has_gaps = look == Look::LCD && scale >= SMALLEST_WITH_GAPS;
    const int light = look == Look::LCD && !picture.lit ? SHADES_OF_A_LIGHT : 0;
    std::vector<uint8_t> shades;
    shades.reserve(size_t{LCD_WIDTH} * LCD_HEIGHT * scale * scale);
    for (unsigned y = 0; y < LCD_HEIGHT * scale; ++y)
        for (unsigned x = 0; x < LCD_WIDTH * scale; ++x) {
            const unsigned column = x / scale, row = y / scale;
            const bool right = has_gaps && x % scale == scale - 1, below = has_gaps && y % scale == scale - 1;
            Shade shade = is_drawn(picture.pixels, column, row) ? ON : OFF;
            if (right || below)
                shade = gap_shade(picture.pixels, column, row, right, below);
            shades.push_back(static_cast<uint8_t>(light + shade));
        }
    return shades;
}

std::string png_file(const Picture &picture, Look look, unsigned scale)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = LCD_WIDTH * scale;
    image.height = LCD_HEIGHT * scale;
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = SHADES;
    const std::vector<uint8_t> shades = shades_of(picture, look, scale);
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string file(size, '\0');
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, shades.data(), 0, palette_of(look).data()))
        throw std::runtime_error(image.message);
    file.resize(size);
    return file;
}

/* An encoder that writes to a text. */
class Gif {
public:
    explicit Gif(std::string &file) : gif_(EGifOpen(&file, append, nullptr)) { check(gif_ != nullptr); }
    ~Gif()
    {
        if (gif_)
            EGifCloseFile(gif_, nullptr);
    }
    Gif(const Gif &) = delete;
    Gif &operator=(const Gif &) = delete;

    void begin(const Palette &palette, int width, int height)
    {
        const std::unique_ptr<ColorMapObject, decltype(&GifFreeMapObject)> colours(
            GifMakeMapObject(SHADES, reinterpret_cast<const GifColorType *>(palette.data())), GifFreeMapObject);
        EGifSetGifVersion(gif_, true);
        check(colours && EGifPutScreenDesc(gif_, width, height, SHADES, 0, colours.get()) == GIF_OK);
        static constexpr uint8_t FOR_EVER[] = {1, 0, 0};
        check(EGifPutExtensionLeader(gif_, APPLICATION_EXT_FUNC_CODE) == GIF_OK &&
              EGifPutExtensionBlock(gif_, 11, "NETSCAPE2.0") == GIF_OK &&
              EGifPutExtensionBlock(gif_, sizeof FOR_EVER, FOR_EVER) == GIF_OK &&
              EGifPutExtensionTrailer(gif_) == GIF_OK);
    }

    void add(std::vector<uint8_t> shades, unsigned hundredths, int width, int height)
    {
        const GraphicsControlBlock control = {DISPOSE_DO_NOT, false, static_cast<int>(hundredths),
                                              NO_TRANSPARENT_COLOR};
        GifByteType block[4];
        const size_t size = EGifGCBToExtension(&control, block);
        check(EGifPutExtension(gif_, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(size), block) == GIF_OK &&
              EGifPutImageDesc(gif_, 0, 0, width, height, false, nullptr) == GIF_OK);
        for (int row = 0; row < height; ++row)
            check(EGifPutLine(gif_, &shades[static_cast<size_t>(row) * width], width) == GIF_OK);
    }

    /* The rest of the file. */
    void end() { check(EGifCloseFile(std::exchange(gif_, nullptr), nullptr) == GIF_OK); }

private:
    static int append(GifFileType *gif, const GifByteType *bytes, int size)
    {
        std::string &file = *static_cast<std::string *>(gif->UserData);
        file.append(reinterpret_cast<const char *>(bytes), static_cast<size_t>(size));
        return size;
    }

    static void check(bool done)
    {
        if (!done)
            throw std::runtime_error("the GIF cannot be made");
    }

    GifFileType *gif_;
};

static_assert(sizeof(Colour) == sizeof(GifColorType));

std::string gif_file(std::span<const Still> stills, Look look, unsigned scale)
{
    const int width = static_cast<int>(LCD_WIDTH * scale), height = static_cast<int>(LCD_HEIGHT * scale);
    std::string file;
    Gif gif(file);
    gif.begin(palette_of(look), width, height);
    for (const Still &still : stills)
        gif.add(shades_of(still.picture, look, scale), still.hundredths, width, height);
    gif.end();
    return file;
}

} // namespace sim
