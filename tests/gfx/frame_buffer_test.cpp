#include "gfx/bitmap.h"
#include "gfx/frame_buffer.h"
#include "tests/support/test_root.h"

#include <climits>
#include <cstring>
#include <random>

/* The same operations pixel by pixel. */
struct PixelModel {
    uint8_t picture[sizeof screenBuffer] = {};
    std::string messages;

    template <typename... Numbers> void say(const char *format, Numbers... numbers)
    {
        char line[128];
        snprintf(line, sizeof line, format, static_cast<int>(numbers)...);
        messages += line;
    }

    static bool outside(int64_t x, int64_t y) { return x < 0 || x >= LCD_WIDTH || y < 0 || y >= LCD_HEIGHT; }

    int get(int x, int y) const { return outside(x, y) || picture[(63 - y) * 16 + x / 8] >> (7 - x % 8) & 1; }

    void dot(int mode, int64_t x, int64_t y)
    {
        if (outside(x, y))
            return say("drawDot return, x %d, y %d\n", x, y);
        uint8_t &byte = picture[(63 - y) * 16 + x / 8];
        const int mask = 0x80 >> x % 8;
        byte = static_cast<uint8_t>(mode == DRAW_NORMAL ? byte | mask : mode == DRAW_REVERSE ? byte ^ mask : byte);
    }

    void rectangle(int mode, int64_t x, int64_t y, int64_t height, int64_t width)
    {
        if (outside(x, y) || outside(x + width - 1, y - height + 1)) {
            if (mode == DRAW_NORMAL)
                say("drawRectangle return, x %d, y %d, width %d, height %d\n", x, y, width, height);
            return;
        }
        for (int64_t column = x; column < x + width; column++)
            for (int64_t row = y - height + 1; row <= y; row++)
                dot(mode, column, row);
    }

    void bitmap(int mode, int64_t x, int64_t y, int height, int width, const uint8_t *bits)
    {
        for (int row = height - 1; row >= 0; row--)
            for (int column = 0; column < width; column++)
                if (bits[row * ((width + 7) / 8) + column / 8] >> (7 - column % 8) & 1)
                    dot(mode, x + column, y - 1 - row);
    }
};

TEST(FrameBuffer, WholeBytesAreAsPixelByPixel)
{
    std::mt19937 random(1);
    const auto any = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    const auto number = [&](int low, int high) {
        static constexpr int far[] = {INT_MIN, INT_MIN + 1, -65536, 65536, INT_MAX - 5, INT_MAX};
        return any(0, 15) == 0 ? far[any(0, 5)] : any(low, high);
    };
    PixelModel model;
    clearScreenBuffer();
    testing::internal::CaptureStdout();
    for (int round = 0; round < 5000; round++) {
        const int operation = any(0, 3);
        const int mode = any(0, 3);
        const int x = number(-12, 140);
        const int y = number(-12, 140);
        const int height = operation == 3 ? any(0, 40) : number(-3, 70);
        const int width = operation == 3 ? any(0, 150) : number(-3, any(0, 1) ? 20 : 135);
        if (operation == 0) {
            drawDot(mode, x, y);
            model.dot(mode, x, y);
        } else if (operation == 1) {
            drawRectangle(x, y, height, width);
            model.rectangle(DRAW_NORMAL, x, y, height, width);
        } else if (operation == 2) {
            setReverseDisplay(x, y, height, width);
            model.rectangle(DRAW_REVERSE, x, y, height, width);
        } else {
            uint8_t bits[40 * 19];
            for (uint8_t &byte : bits)
                byte = static_cast<uint8_t>(random());
            drawBitmap(mode, x, y, height, width, bits);
            model.bitmap(mode, x, y, height, width, bits);
        }
        ASSERT_EQ(memcmp(screenBuffer, model.picture, sizeof screenBuffer), 0)
            << operation << " " << mode << ": " << x << " " << y << " " << height << " " << width;
        ASSERT_EQ(getDot(x, y), model.get(x, y)) << x << " " << y;
    }
    fflush(stdout);
    EXPECT_TRUE(testing::internal::GetCapturedStdout() == model.messages);
}
