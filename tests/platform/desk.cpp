#include "core/display.h"
#include "core/screen_table.h"
#include "platform/desk/root.h"
#include "platform/router.h"
#include "tests/platform/desk_folder.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

/* Starts the daemon's platform on the root folder `name`; null: none. */
static void start_on(const char *name)
{
    name ? setenv("PANEL_ROOT", name, 1) : unsetenv("PANEL_ROOT");
    router_start_tick(nullptr);
}

TEST(DeskRootDeathTest, RefusesToStartWithoutAFolderOfItsOwn)
{
    /* Death tests run before all others: no root is open yet. */
    const TempFolder top;
    const std::string colon = top / "a:b";
    std::filesystem::create_directory(colon);
    for (const char *name : {static_cast<const char *>(nullptr), "", "/", "/nowhere", "/dev/null", colon.c_str()})
        EXPECT_EXIT(start_on(name), testing::ExitedWithCode(1), "PANEL_ROOT");
}

class Desk : public testing::Test
{
protected:
    const std::filesystem::path &root = desk_folder();
};

TEST_F(Desk, FilesLieBelowTheRootAndOpenAtOnce)
{
    const int fd = router_open("/tmp/file", O_WRONLY | O_CREAT);
    EXPECT_EQ(fcntl(fd, F_GETFD), FD_CLOEXEC);
    close(fd);
    EXPECT_TRUE(std::filesystem::exists(root / "tmp/file") && router_exists("/tmp/file"));
    EXPECT_EQ(router_remove("/tmp/file"), 0);
    EXPECT_FALSE(router_exists("/tmp/file"));
    ASSERT_EQ(mkfifo((root / "tmp/fifo").c_str(), 0600), 0);
    EXPECT_EQ(router_open("/tmp/fifo", O_WRONLY), -1);
    EXPECT_EQ(errno, ENXIO);
}

TEST_F(Desk, CommandsReachTheRootAlone)
{
    write_file(root / "sbin/rc", "#!/bin/sh\necho $PANEL_ROOT $* > \"$PANEL_ROOT/tmp/rc\"\necho done\n");
    std::filesystem::permissions(root / "sbin/rc", std::filesystem::perms::owner_all);
    FILE *stream = router_popen("rc wireless restart");
    ASSERT_NE(stream, nullptr);
    char line[16];
    EXPECT_STREQ(fgets(line, sizeof line, stream), "done\n");
    EXPECT_EQ(router_pclose(stream), 0);
    EXPECT_EQ(read_file(root / "tmp/rc"), root.string() + " wireless restart\n");
    EXPECT_EQ(router_system("/sbin/rc > /tmp/out"), 0);
    EXPECT_EQ(read_file(root / "tmp/out"), "done\n");
    for (const char *workstation : {"ls 2> /dev/null", "/bin/ls 2> /dev/null"})
        EXPECT_NE(router_system(workstation), 0);
    const std::string endless(1 << 20, 'x');
    EXPECT_EQ(router_system(endless.c_str()), -1);
    EXPECT_EQ(router_popen(endless.c_str()), nullptr);
}

TEST_F(Desk, GoesOnWithoutItsSimulator)
{
    setenv("PANEL_WATCHED", "yes", 1);
    errno = 0;
    EXPECT_EQ(router_open("/tmp/none", O_RDONLY), -1);
    EXPECT_EQ(errno, ENOENT) << "of the file, not of the way to the simulator";
    unsetenv("PANEL_WATCHED");
}

/* A number as this processor keeps it, which is how others on it read what the daemon sends them. */
template <typename Number> static std::string native(Number number)
{
    return {reinterpret_cast<const char *>(&number), sizeof number};
}

TEST_F(Desk, FramesReachWhoeverListens)
{
    const std::string header = native(uint32_t{1040}) + native(uint16_t{0x12}) + native(uint16_t{0}) +
                               native(uint32_t{0}) + native(static_cast<uint32_t>(getpid()));
    std::string frame;
    for (int i = 0; i < 1024; i++)
        frame += static_cast<char>(i * 7 + i / 256);
    const auto *picture = reinterpret_cast<const uint8_t *>(frame.data());
    EXPECT_EQ(write_lcd_data(picture), 0) << "nobody listens";

    const int listener = socket(AF_UNIX, SOCK_DGRAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/run/lcd", desk_root());
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    for (int i = 0; i < 1000; i++)
        ASSERT_EQ(write_lcd_data(picture), 0) << "a full listener";
    std::string received(2000, '\0');
    received.resize(static_cast<size_t>(recv(listener, received.data(), received.size(), MSG_DONTWAIT)));
    EXPECT_EQ(received, header + frame);
    close(listener);
}

TEST_F(Desk, APairingIsStartedByARecordOfThisProcessor)
{
    write_file(root / "proc/wsc_pbc", "");
    testing::internal::CaptureStdout(); // the page finds no glyphs, and says so
    switch_screen("WPS start");
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(read_file(root / "proc/wsc_pbc"), native(uint32_t{1}) + std::string(12, '\0'));
}
