#include "core/display.h"

#include "gfx/frame_buffer.h"
#include "tests/support/test_root.h"

TEST(Display, SendsTheInvertedPictureAndLeavesNoLock)
{
    const TestRoot root;
    clearScreenBuffer();
    drawDot(DRAW_NORMAL, 0, 63);
    EXPECT_EQ(showScreen(), 0);
    EXPECT_EQ(replay.frame_count, 1u);
    EXPECT_EQ(replay.frame[0], 0x7F);
    EXPECT_EQ(replay.frame[1023], 0xFF);
    EXPECT_FALSE(std::filesystem::exists(root.path(LCD_LOCK_FILE)));
}

TEST(Display, AForeignLockDropsTheFrameButNotTheInversion)
{
    const TestRoot root;
    root.write(LCD_LOCK_FILE, "");
    clearScreenBuffer();
    EXPECT_EQ(printed([] { EXPECT_EQ(showScreen(), -1); }), "write_lcd_data: write protect check failed, return\n");
    EXPECT_EQ(replay.frame_count, 0u);
    EXPECT_EQ(screenBuffer[0], 0xFF);
    EXPECT_TRUE(std::filesystem::exists(root.path(LCD_LOCK_FILE)));
}

TEST(Display, SaysWhyAFrameCannotBeSent)
{
    const TestRoot root;
    std::filesystem::remove_all(root.path("/tmp/lcd"));
    EXPECT_EQ(printed([] { EXPECT_EQ(write_lcd_data(screenBuffer), -1); }),
              "write_lcd_data: write protect failed, return\n");
    std::filesystem::create_directories(root.path("/tmp/lcd"));
    EXPECT_EQ(printed([] { EXPECT_EQ(write_lcd_data(nullptr), -1); }),
              "write_lcd_data: can not create a netlink socket\n");
    replay.display_socket_fails = true;
    EXPECT_EQ(printed([] { EXPECT_EQ(write_lcd_data(screenBuffer), -1); }),
              "write_lcd_data: can not create a netlink socket\n");
    replay.display_socket_fails = false;
    replay.display_bind_fails = true;
    EXPECT_EQ(printed([] { EXPECT_EQ(write_lcd_data(screenBuffer), -1); }), "write_lcd_data: bind() error\n");
    EXPECT_FALSE(std::filesystem::exists(root.path(LCD_LOCK_FILE)));
    replay.display_bind_fails = false;
    EXPECT_EQ(write_lcd_data(screenBuffer), 0);
}
