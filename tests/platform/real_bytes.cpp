/* What others read of the daemon and it of them, byte by byte: from sockets and files, in the order of this processor
 * where the other end is on it, most significant byte first elsewhere. */
#include "core/display.h"
#include "core/screen_table.h"
#include "gfx/bitmap.h"
#include "status/computers.h"
#include "tests/platform/desk_folder.h"

#include <bit>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::string_literals;

/* Bytes that stand most significant first, as this processor keeps them. */
static std::string native(std::string bytes)
{
    return std::endian::native == std::endian::big ? bytes : std::string(bytes.rbegin(), bytes.rend());
}

/* A number of four bytes, most significant first. */
static std::string number(long value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

class RealBytes : public testing::Test
{
protected:
    const std::filesystem::path &root = desk_folder();

    RealBytes()
    {
        for (const char *folder : {"proc", "run", "sbin/lcd_ml/_auto_bitmap_", "tmp/lcd", "var"})
            std::filesystem::create_directories(root / folder);
    }
};

TEST_F(RealBytes, AFrameIsAMessageOfThisProcessor)
{
    const int listener = socket(AF_UNIX, SOCK_DGRAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    /* A socket's path has few bytes: the descriptor stands for the folder. */
    const int folder = open((root / "run").c_str(), O_PATH | O_DIRECTORY);
    std::filesystem::remove(root / "run/lcd");
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/lcd", folder);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);

    std::string frame;
    for (int i = 0; i < 1024; i++)
        frame += static_cast<char>(i * 7 + i / 256);
    EXPECT_EQ(write_lcd_data(reinterpret_cast<const uint8_t *>(frame.data())), 0);

    std::string received(2000, '\0');
    const ssize_t size = recv(listener, received.data(), received.size(), MSG_DONTWAIT);
    ASSERT_EQ(size, 1040);
    received.resize(1040);
    const std::string header =
        native("\x00\x00\x04\x10"s) + native("\x00\x12"s) + "\0\0"s + "\0\0\0\0"s + native(number(getpid()));
    EXPECT_EQ(received, header + frame);
    close(listener);
    close(folder);
    std::filesystem::remove(root / "run/lcd");
}

TEST_F(RealBytes, APairingIsStartedByARecordOfThisProcessor)
{
    const std::filesystem::path push_button = root / "proc/wsc_pbc";
    write_file(push_button, "");
    testing::internal::CaptureStdout(); // the page finds no glyphs, and says so
    switch_screen("WPS start");
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(read_file(push_button), native("\0\0\0\x01"s) + std::string(12, '\0'));
}

TEST_F(RealBytes, ALeaseIsInNetworkOrder)
{
    const std::string lease =
        std::string(16, '\x11') + "\xC0\xA8\x01\x07"s + "\x00\x00\x0E\x10"s + "kitchen"s + std::string(33, '\0');
    write_file(root / "var/udhcpd.leases", lease);
    char name[16];
    EXPECT_STREQ(lookup_lease_name(0x07, name, sizeof name), "kitchen");
    EXPECT_EQ(lookup_lease_name(0xC0, name, sizeof name), nullptr);
}

TEST_F(RealBytes, APictureBeginsWithItsMostSignificantByte)
{
    write_file(root / "sbin/lcd_ml/_auto_bitmap_/P", "\x01\x02\x00\x03"s + std::string(99, '\x55'));
    Bitmap *bitmap = loadBitmap("p");
    EXPECT_EQ(bitmap->width, 0x0102);
    EXPECT_EQ(bitmap->height, 0x0003);
    freeBitmap(bitmap);
}
