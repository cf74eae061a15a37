/* What another program of the router may put in place of the daemon's files. */
#include "core/daemons.h"
#include "core/display.h"
#include "core/file.h"
#include "gfx/frame_buffer.h"
#include "status/computers.h"
#include "tests/support/test_root.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

TEST(PlantedFiles, TheRestartRecordIsNoWayToAnotherFile)
{
    static constexpr std::string_view RECORD = "/tmp/lcd/lcd_debug_process";
    void (*const plants[])(const fs::path &record, const fs::path &victim) = {
        [](const fs::path &record, const fs::path &victim) { fs::create_symlink(victim, record); },
        [](const fs::path &record, const fs::path &) { fs::create_symlink("missing", record); },
        [](const fs::path &record, const fs::path &victim) { fs::create_hard_link(victim, record); },
        [](const fs::path &record, const fs::path &) { mkfifo(record.c_str(), 0600); },
    };
    for (const auto plant : plants) {
        const TestRoot root;
        root.write("/victim", "");
        plant(root.path(RECORD), root.path("/victim"));
        check_daemons();
        EXPECT_FALSE(fs::exists(fs::symlink_status(root.path(RECORD))));
    }
    const TestRoot root;
    root.write(RECORD, "pc_monitor\n");
    check_daemons();
    EXPECT_TRUE(fs::exists(root.path(RECORD))) << "an ordinary record is kept";
}

TEST(PlantedFiles, TheDisplayLockFollowsNoLink)
{
    const TestRoot root;
    fs::create_symlink(root.path("/victim"), root.path(LCD_LOCK_FILE));
    EXPECT_EQ(printed([] { EXPECT_EQ(write_lcd_data(screenBuffer), -1); }),
              "write_lcd_data: write protect failed, return\n");
    EXPECT_FALSE(fs::exists(root.path("/victim")));
}

TEST(PlantedFiles, AFullDiskEndsAWrite)
{
    const TestRoot root;
    fs::create_symlink("/dev/full", root.path("/tmp/file"));
    EXPECT_FALSE(File("/tmp/file", O_WRONLY).write_full("abc", 3));
}

TEST(PlantedFiles, AListThatDoesNotEndIsLeft)
{
    const TestRoot root;
    std::string lines;
    while (lines.size() < 1'000'000)
        lines += "no computer\n";
    root.write("/tmp/lcd/network_status/speed/pcs", "12 1\n" + lines + "13 1\n");
    root.link_assets();
    build_computer_rows(COMPUTER_SPEED);
    EXPECT_STRNE(computer_rows[0].label, "");
    EXPECT_STREQ(computer_rows[1].label, "");
}
