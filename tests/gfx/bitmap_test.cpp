#include "gfx/bitmap.h"
#include "gfx/frame_buffer.h"
#include "tests/gfx/glyph_root.h"

using namespace std::string_literals;

/* `size` bytes of rows, each unlike its neighbours. */
static std::string rows(size_t size)
{
    std::string bytes;
    for (size_t i = 0; i < size; i++)
        bytes += static_cast<char>(i * 7 + i / 256 + 1);
    return bytes;
}

static std::string bytesOf(const Bitmap *bitmap)
{
    return {reinterpret_cast<const char *>(bitmap->bits), (bitmap->width + 7u) / 8 * bitmap->rows};
}

TEST(Bitmap, HoldsWhatItsFileHolds)
{
    const struct {
        std::string header;
        int width, height;
        std::string file, held; // behind the header; whole rows
    } cases[] = {
        {"\0\x08\0\x02"s, 8, 2, "\xFF\x81", "\xFF\x81"},
        {"\0\x09\0\x02"s, 9, 2, "abcdefgh", "abcd"}, // what is behind the rows is not read
        {"\0\x09\0\x03"s, 9, 3, "abc", "abc\0"s},    // the second row is cut short
        {"\0\x05\0\x0C"s, 5, 12, "", ""},
        {"\0\0\0\x07"s, 0, 7, "abc", ""},
        {"\0\x80\0\x40"s, 128, 64, rows(1500), rows(1024)},
        {"\0\x80\0\x41"s, 128, 65, rows(1040), rows(1040)},
        {"\0\x80\0\x41"s, 128, 65, rows(1024), rows(1024)},
        {"\x01\x90\x01\xF4"s, 400, 500, rows(25000), rows(25000)},
        {"\x01\x90\x01\xF4"s, 400, 500, rows(4999), rows(4999) + "\0"s},
        {"\xFF\xFF\xFF\xFF"s, 0xFFFF, 0xFFFF, rows(3), rows(3) + std::string(8189, '\0')},
        {"\xFF\xFF\xFF\xFF"s, 0xFFFF, 0xFFFF, rows(1500), rows(1500) + std::string(6692, '\0')},
        // What is missing of a header reads as the end of file does.
        {"", 0xFFFF, 0xFFFF, "", ""},
        {"\0\x05\0"s, 5, 0xFF, "", ""},
    };
    const GlyphRoot root;
    for (const auto &c : cases) {
        root.picture("P", c.header + c.file);
        Bitmap *bitmap = loadBitmap("p");
        EXPECT_EQ(bitmap->width, c.width);
        EXPECT_EQ(bitmap->height, c.height);
        EXPECT_TRUE(bytesOf(bitmap) == c.held) << c.width << " x " << c.height << ", " << c.file.size() << " bytes";
        freeBitmap(bitmap);
    }
}

TEST(Bitmap, HangsBelowItsTopEdge)
{
    const GlyphRoot root;
    root.picture("ICON_MODEM", "\0\x08\0\x03\xFF\x81"s); // its last row is missing
    clearScreenBuffer();
    EXPECT_EQ(printed([] { drawFigure(DRAW_NORMAL, 0, 63, "icon_modem"); }), "");
    const int column[] = {0, 0xFF, 0x81, 0};
    for (int row = 0; row < 4; row++)
        EXPECT_EQ(screenBuffer[row * LCD_ROW_BYTES], column[row]) << row;
}

TEST(Bitmap, BlocksStandInForWhatIsMissing)
{
    const GlyphRoot root;
    for (int language = 0; language <= 8; language++) {
        const bool wide = language >= 6;
        root.use_language(language);
        Bitmap *bitmap = nullptr;
        EXPECT_EQ(printed([&] { bitmap = loadBitmap("U_4e2d"); }),
                  "no bitmap for U_4e2d file name /sbin/lcd_ml/_auto_bitmap_/U_4E2D\n");
        EXPECT_EQ(bitmap->width, wide ? 12 : 5);
        EXPECT_EQ(bitmap->height, 12);
        EXPECT_EQ(bytesOf(bitmap), wide ? std::string(24, '\xFF') : "\0\0\0pppppp\0\0\0"s) << language;
        freeBitmap(bitmap);
        freeBitmap(bitmap); // it is nobody's
    }
    freeBitmap(nullptr);
}

TEST(Bitmap, ANameWhosePathIsTooLongIsMissing)
{
    const GlyphRoot root;
    const std::string longest(124, 'X');
    root.picture(longest, "\0\x03\0\x01\xE0"s);
    root.picture(longest + "X", "\0\x03\0\x01\xE0"s);
    EXPECT_EQ(LoadedBitmap(longest.c_str()).width(), 3);
    EXPECT_EQ(printed([&] { EXPECT_EQ(LoadedBitmap((longest + "x").c_str()).width(), 5); }),
              "no bitmap for " + longest + "x file name /sbin/lcd_ml/_auto_bitmap_/" + longest + "\n");
}
