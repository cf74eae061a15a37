/* The replay platform: what the daemon sees of the router that a script moves, and the records it leaves. */
#include "platform/nvram.h"
#include "platform/router.h"
#include "tests/support/test_root.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace std::string_literals;

static std::string captured(const char *command)
{
    FILE *stream = router_popen(command);
    if (!stream)
        return "(failed)";
    std::string text;
    for (int c; (c = fgetc(stream)) != EOF;)
        text += static_cast<char>(c);
    EXPECT_EQ(router_pclose(stream), 0);
    return text;
}

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

TEST(ReplayRouter, YieldsTheOutputsThatAreSet)
{
    const TestRoot root;
    replay.outputs = {{"ps", "one\ntwo"}, {"cut", "ab\0cd"s}, {"empty", ""}};
    EXPECT_EQ(captured("ps"), "one\ntwo");
    EXPECT_EQ(captured("cut"), "ab");
    EXPECT_EQ(captured("empty"), "");
    EXPECT_EQ(captured("never named"), "");
    replay.failing["ps"] = true;
    EXPECT_EQ(captured("ps"), "(failed)");
}

TEST(ReplayRouter, RecordsWhatTheDaemonDoes)
{
    const TestRoot root;
    replay.trace = true;
    replay.ticks = [] { return uint32_t{4294967295}; };
    EXPECT_EQ(printed([] {
                  router_system("rc wireless restart&");
                  captured("ps -e");
                  nvram_set("key", "a \"b\"\\\n\r\t\f\x01\x1b\x7f\xc3\xa9");
                  nvram_commit();
              }),
              "@4294967295 system rc wireless restart&\n"
              "@4294967295 pipe ps -e\n"
              "@4294967295 set key \"a \\\"b\\\"\\\\\\n\\r\\t\\f\\x01\\x1b\\x7f\xc3\xa9\"\n"
              "@4294967295 commit\n");
}

TEST(ReplayRouter, KeepsAndRecordsTheFramePayload)
{
    const TestRoot root;
    replay.trace = true;
    uint8_t message[1041] = {};
    message[15] = 0x77;
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
    EXPECT_EQ(replay.frame[0], 0x0f);
    EXPECT_EQ(replay.frame[1023], 0xa0);
}

TEST(ReplayRouter, AnswersAboutTheInterfacesThatExist)
{
    const TestRoot root;
    replay.interfaces["eth0"] = {"10.0.0.2", "255.255.255.0", "00:1f:33:8A:5f:2a", 1492};
    ifreq query = {};
    std::string("eth0").copy(query.ifr_name, IFNAMSIZ);
    const auto dotted = [&] {
        return std::string(inet_ntoa(reinterpret_cast<sockaddr_in &>(query.ifr_addr).sin_addr));
    };
    ASSERT_EQ(router_interface_query(-1, SIOCGIFADDR, &query), 0);
    EXPECT_EQ(query.ifr_addr.sa_family, AF_INET);
    EXPECT_EQ(dotted(), "10.0.0.2");
    ASSERT_EQ(router_interface_query(-1, SIOCGIFNETMASK, &query), 0);
    EXPECT_EQ(dotted(), "255.255.255.0");
    ASSERT_EQ(router_interface_query(-1, SIOCGIFHWADDR, &query), 0);
    EXPECT_EQ(std::string(query.ifr_hwaddr.sa_data, 6), "\x00\x1f\x33\x8a\x5f\x2a"s);
    ASSERT_EQ(router_interface_query(-1, SIOCGIFMTU, &query), 0);
    EXPECT_EQ(query.ifr_mtu, 1492);
    EXPECT_EQ(router_interface_query(-1, SIOCGIFINDEX, &query), -1);
    EXPECT_EQ(errno, EINVAL);
    std::string("eth1").copy(query.ifr_name, IFNAMSIZ);
    EXPECT_EQ(router_interface_query(-1, SIOCGIFADDR, &query), -1);
    EXPECT_EQ(errno, ENODEV);
}
