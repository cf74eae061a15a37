/* The replay platform: what the daemon sees of the router that a script moves, and the records it leaves. */
#include "platform/router.h"
#include "tests/support/test_root.h"

#include <fcntl.h>
#include <unistd.h>

TEST(ReplayRouter, FindsPathsBelowTheRootAndFollowsLinks)
{
    const TestRoot root;
    const TestRoot outside;
    outside.write("/pack", "text");
    std::filesystem::create_symlink(outside.path("/pack"), root.path("/tmp/link"));
    replay_open_root(root.path("/"));
    char text[5] = {};
    const int fd = router_open("/tmp/link", O_RDONLY);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(read(fd, text, sizeof text), 4);
    EXPECT_STREQ(text, "text");
    EXPECT_TRUE(fcntl(fd, F_GETFD) & FD_CLOEXEC);
    close(fd);
    EXPECT_TRUE(router_exists("/tmp/link"));
    EXPECT_FALSE(router_exists("//etc/passwd")) << "a path of this machine";
    EXPECT_EQ(router_remove("/tmp/link"), 0);
    EXPECT_EQ(router_remove("/tmp/link"), -1);
    EXPECT_TRUE(std::filesystem::exists(outside.path("/pack")));
    EXPECT_FALSE(replay_open_root(root.path("/missing")));
    EXPECT_TRUE(router_exists("/tmp")) << "the old root stays";
}

TEST(ReplayRouter, KeepsAndRecordsTheFramePayload)
{
    const TestRoot root;
    replay.trace = true;
    uint8_t message[1041] = {};
    message[15] = 0x77; // the last of the header
    message[16] = 0x0f;
    message[1039] = 0xa0;
    EXPECT_EQ(printed([&] {
                  const int fd = router_display_socket();
                  EXPECT_EQ(router_display_bind(fd, 1), 0);
                  EXPECT_EQ(router_display_send(fd, message, 1040), 1040);
                  EXPECT_EQ(router_display_send(fd, message, 1039), -1);
                  EXPECT_EQ(router_display_send(fd, message, 1041), -1);
                  EXPECT_EQ(close(fd), 0);
              }),
              "@0 frame 0f" + std::string(2 * 1022, '0') + "a0\n");
    EXPECT_EQ(replay.frame_count, 1u);
}
