/* A frame as text and as a PNG: the right pixels, the right way up. */
#include "replay/picture.h"
#include "tests/support/test_root.h"

#include <array>
#include <png.h>
#include <vector>

using Frame = std::array<uint8_t, 1024>;

static constexpr struct {
    int x, y;
    size_t byte;
    uint8_t bit;
} corners[] = {
    {0, 63, 0, 0x80}, {127, 63, 15, 0x01}, {0, 0, 1008, 0x80}, {127, 0, 1023, 0x01}, {11, 62, 17, 0x10},
};

/* The empty screen with one pixel drawn. */
static Frame frame_with(size_t byte, uint8_t bit)
{
    Frame frame;
    frame.fill(0xff);
    frame[byte] = static_cast<uint8_t>(~bit);
    return frame;
}

TEST(Picture, ShowsAZeroBitAsADrawnPixel)
{
    for (const auto &corner : corners) {
        const Frame frame = frame_with(corner.byte, corner.bit);
        const std::string art = text_art(frame.data());
        ASSERT_EQ(art.size(), 64u * 129);
        EXPECT_EQ(art.find('#'), static_cast<size_t>((63 - corner.y) * 129 + corner.x));
        EXPECT_EQ(art.find('#'), art.rfind('#'));
        EXPECT_TRUE(is_lit(frame.data(), corner.x, corner.y));
        EXPECT_FALSE(is_lit(frame.data(), corner.x ^ 1, corner.y));
    }
}

TEST(Picture, IsEnlargedFourTimesInAPng)
{
    const TestRoot root;
    const std::string path = root.path("/shot.png");
    for (const auto &corner : corners) {
        ASSERT_EQ(write_png(frame_with(corner.byte, corner.bit).data(), path), "");
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str()));
        ASSERT_EQ(image.width, 512u);
        ASSERT_EQ(image.height, 256u);
        image.format = PNG_FORMAT_GRAY;
        std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
        ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
        for (int row = 0; row < 256; row++)
            for (int column = 0; column < 512; column++) {
                const bool drawn = column / 4 == corner.x && row / 4 == 63 - corner.y;
                ASSERT_EQ(pixels[static_cast<size_t>(row * 512 + column)], drawn ? 0 : 255) << column << ' ' << row;
            }
    }
}

TEST(Picture, LeavesNothingBehindWhenItCannotBeWritten)
{
    const TestRoot root;
    const Frame frame = frame_with(0, 1);
    EXPECT_EQ(write_png(frame.data(), root.path("/missing/shot.png")), "No such file or directory");
    EXPECT_EQ(write_png(frame.data(), root.path("/tmp")), "Is a directory");
    EXPECT_EQ(write_png(frame.data(), "/dev/full"), "No space left on device");
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    EXPECT_TRUE(std::filesystem::exists(root.path("/tmp")));
}
