/* A frame as a PNG: the right pixels, the right way up, and no half of it. */
#include "replay/picture.h"
#include "tests/support/test_root.h"

#include <png.h>
#include <vector>

TEST(Png, ShowsEachPixelFourByFourOrLeavesNothingBehind)
{
    uint8_t frame[1024];
    for (size_t i = 0; i < sizeof frame; i++)
        frame[i] = static_cast<uint8_t>(i * 7 + i / 256);
    const TestRoot root;
    const std::string path = root.path("/shot.png");
    ASSERT_EQ(write_png(frame, path), "");
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, path.c_str()));
    ASSERT_EQ(std::pair(image.width, image.height), std::pair(512u, 256u));
    image.format = PNG_FORMAT_GRAY;
    std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    for (int i = 0; i < 512 * 256; i++)
        ASSERT_EQ(pixels[static_cast<size_t>(i)], is_lit(frame, i % 512 / 4, 63 - i / 512 / 4) ? 0 : 255) << i;

    EXPECT_EQ(write_png(frame, root.path("/missing/shot.png")), "No such file or directory");
    /* By a link of its own: a fault that removes it must not remove the device of this machine. */
    std::filesystem::create_symlink("/dev/full", root.path("/full"));
    EXPECT_EQ(write_png(frame, root.path("/full")), "No space left on device");
    EXPECT_TRUE(std::filesystem::exists(root.path("/full"))) << "a device stays";
}
