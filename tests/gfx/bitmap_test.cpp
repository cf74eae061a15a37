#include "gfx/bitmap.h"
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
        {"\0\x09\0\x02"s, 9, 2, "abcdefgh", "abcd"}, // what is behind the rows is not read
        {"\0\x09\0\x03"s, 9, 3, "abc", "abc\0"s},    // the second row is cut short
        {"\0\0\0\x07"s, 0, 7, "abc", ""},
        {"\0\x80\0\x41"s, 128, 65, rows(1040), rows(1040)},
        {"\x01\x90\x01\xF4"s, 400, 500, rows(4999), rows(4999) + "\0"s},
        {"\xFF\xFF\xFF\xFF"s, 0xFFFF, 0xFFFF, rows(1500), rows(1500) + std::string(6692, '\0')},
        {"\0\x05\0"s, 5, 0xFF, "", ""}, // a missing byte reads as the end of file does
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
