#include "status/wan.h"

#include "tests/support/test_root.h"

#include <sys/resource.h>

static constexpr const char *REGISTER = "/sbin/5416regc 0x4048 2> /dev/null";

TEST(Wan, ReadsTheLinkFromTheRegister)
{
    const struct {
        std::string output;
        int found, state;
    } cases[] = {
        {"Read :4048 = 0x12BF5678\n", 1, 1},
        {":4048 0x00ef0000", 1, 2},
        {":4048 0x00d7", 1, 3},
        {":4048 0xBFFF0000", 1, 0},
        {":4048 0x00a:", 1, 1},
        {":4048 0x00kF", 1, 1},
        {":4048 0x00F", 0, 0},
        {":4048 BF", 0, 0},
        {"0x00BF0000 :4048", 0, 0},
    };
    const TestRoot root;
    uint8_t state;
    for (const auto &test : cases) {
        replay.outputs[REGISTER] = test.output;
        EXPECT_EQ(get_wan_port_status(&state), test.found) << test.output;
        EXPECT_EQ(state, test.state) << test.output;
    }
    replay.failing[REGISTER] = true;
    EXPECT_EQ(get_wan_port_status(&state), 0);
}

TEST(Wan, ShowsTheAddressOfAConnection)
{
    const struct {
        bool up;
        const char *link; // the register's second byte
        const char *mode, *address, *login, *interface_address, *shown;
    } cases[] = {
        {true, "BF", "dhcp", "10.9.9.9", "", "203.0.113.9", "203.0.113.9"},
        {false, "BF", "dhcp", "", "", "203.0.113.9", "---"},
        {true, "FF", "dhcp", "", "", "203.0.113.9", "---"},
        {true, "F7", "static", "10.9.9.9", "0", "", "10.9.9.9"},
        {true, "FF", "static", "10.9.9.9", "", "203.0.113.9", "---"},
        {true, "F7", "static", "", "", "203.0.113.9", "---"},
        {true, "F7", "static", "255.255.255.25\xC3\xA9", "", "", "255.255.255.25"},
        {true, "EF", "bpa", "", "0", "203.0.113.9", "---"},
        {true, "EF", "bpa", "", "", "203.0.113.9", "203.0.113.9"},
        {true, "EF", "pppoe", "", "0", "10.64.64.64", "---"},
        {true, "EF", "", "", "0", "1.1.1.100", "---"},
    };
    for (const auto &test : cases) {
        const TestRoot root;
        if (test.up)
            root.write("/tmp/wan_uptime", "");
        replay.outputs[REGISTER] = std::string(":4048 0x00") + test.link;
        replay.settings = {{"wan_ifname", "fifteen-letters, and more"},
                           {"wan_mode", test.mode},
                           {"wan_ipaddr", test.address},
                           {"bpa_login", test.login}};
        replay.interfaces["fifteen-letters"] = {test.interface_address, "255.0.0.0", "00:1f:33:8a:5f:2a", 1500};
        char text[20];
        EXPECT_STREQ(get_wan_address_text(text), test.shown) << test.mode << ' ' << test.link;
    }
}

TEST(Wan, ReadsAllOfAnInterface)
{
    const TestRoot root;
    replay.interfaces["ppp0"] = {"10.64.64.64", "255.0.0.0", "ff:1f:33:8a:5f:2a", 1492};
    IfInfo info = {"ppp0", "", "", "", 0};
    EXPECT_EQ(getIFInfo(&info), -2);
    EXPECT_EQ(info.hwaddr + std::string(info.netmask) + std::to_string(info.mtu), "ff:1f:33:8a:5f:2a255.0.0.01492");
    const ReplayInterface whole = replay.interfaces["ppp0"];
    for (const auto field :
         {&ReplayInterface::address, &ReplayInterface::netmask, &ReplayInterface::hardware_address}) {
        replay.interfaces["ppp0"] = whole;
        replay.interfaces["ppp0"].*field = "";
        EXPECT_EQ(getIFInfo(&info), -1) << "one of the queries fails";
    }
    replay.interfaces.clear();
    EXPECT_EQ(getIFInfo(&info), -1) << "all of them fail";
    rlimit files;
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit none = {0, files.rlim_max};
    testing::internal::CaptureStderr();
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_EQ(getIFInfo(&info), -1);
    setrlimit(RLIMIT_NOFILE, &files);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "user: socket creating failed: Too many open files\n");
}
