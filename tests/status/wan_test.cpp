#include "status/wan.h"

#include "tests/support/test_root.h"

#include <random>
#include <sys/resource.h>

static constexpr const char *REGISTER = "/sbin/5416regc 0x4048 2> /dev/null";

TEST(Wan, ReadsTheLinkFromTheRegister)
{
    struct RegisterCase {
        std::string output;
        int found, state;
    };
    const RegisterCase cases[] = {
        {"Read :4048 = 0x12BF5678\n", 1, 1},
        {":4048 0x00ef0000", 1, 2},
        {":4048 0x00F70000", 1, 3},
        {":4048 0xBFFF0000", 1, 0},
        {":4048 0x00eF", 1, 2},
        {":4048x..47", 1, 2},
        {":4048 0x00d70000", 1, 3},
        {":4048 0x00000000", 1, 1},
        {":4048 0x00a:", 1, 1},
        {":4048 0x00kF", 1, 1},
        {":4048 0x00F", 0, 0},
        {":4048 0x", 0, 0},
        {":4048 BF", 0, 0},
        {"0x00BF0000 :4048", 0, 0},
        {":404 0x00BF0000", 0, 0},
        {"", 0, 0},
        {std::string(1 << 17, ':') + "4048 xxxBF", 1, 1},
    };
    const TestRoot root;
    uint8_t state;
    for (const RegisterCase &test : cases) {
        replay.outputs[REGISTER] = test.output;
        EXPECT_EQ(get_wan_port_status(&state), test.found) << test.output.substr(0, 40);
        EXPECT_EQ(state, test.state) << test.output.substr(0, 40);
    }
    std::mt19937 random;
    for (int round = 0; round < 2000; round++) {
        std::string &output = replay.outputs[REGISTER] = ":4048";
        for (size_t left = random() % 9; left > 0; left--)
            output += round % 2 ? static_cast<char>(random()) : "x0fB\n:"[random() % 6];
        const int found = get_wan_port_status(&state);
        EXPECT_TRUE(state == 0 || (found == 1 && state <= 3)) << output;
    }
    replay.failing[REGISTER] = true;
    state = 9;
    EXPECT_EQ(get_wan_port_status(&state), 0);
    EXPECT_EQ(state, 0);
}

TEST(Wan, ReadsAnInterface)
{
    struct InterfaceCase {
        ReplayInterface interface; // an empty text: that query fails
        int result;
    };
    const InterfaceCase cases[] = {
        {{"203.0.113.9", "255.255.255.255", "00:1f:33:8a:5f:2a", 1492}, 0},
        {{"10.64.64.64", "255.0.0.0", "ff:ff:ff:ff:ff:ff", -1}, -2},
        {{"", "255.0.0.0", "00:00:00:00:00:00", 0}, -1},
        {{"10.64.64.64", "", "00:00:00:00:00:00", 1}, -1},
        {{"10.64.64.64", "0.0.0.0", "", 1}, -1},
    };
    const TestRoot root;
    for (const InterfaceCase &test : cases) {
        replay.interfaces["ppp0"] = test.interface;
        IfInfo info = {"ppp0", "", "", "", 7};
        EXPECT_EQ(getIFInfo(&info), test.result) << test.interface.address;
        EXPECT_EQ(info.ipaddr, test.interface.address);
        EXPECT_EQ(info.hwaddr, test.interface.hardware_address);
        EXPECT_EQ(info.netmask, test.interface.netmask);
        EXPECT_EQ(info.mtu, test.interface.mtu);
    }
    IfInfo unknown = {"eth9", "", "", "", 7};
    EXPECT_EQ(getIFInfo(&unknown), -1);
    EXPECT_EQ(unknown.mtu, 7);
}

TEST(Wan, SaysWhyThereIsNoSocket)
{
    rlimit files;
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit none = {0, files.rlim_max};
    IfInfo info = {"ppp0", "", "", "", 0};
    testing::internal::CaptureStderr();
    setrlimit(RLIMIT_NOFILE, &none);
    const int result = getIFInfo(&info);
    setrlimit(RLIMIT_NOFILE, &files);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "user: socket creating failed: Too many open files\n");
    EXPECT_EQ(result, -1);
}

TEST(Wan, ShowsTheAddressOfAConnection)
{
    struct AddressCase {
        bool up;
        const char *link; // the register's second byte
        std::string mode, address, login, interface_address, shown;
    };
    const std::string huge(1 << 20, '7');
    const AddressCase cases[] = {
        {true, "BF", "dhcp", "10.9.9.9", "", "203.0.113.9", "203.0.113.9"},
        {false, "BF", "dhcp", "", "", "203.0.113.9", "---"},
        {true, "FF", "dhcp", "", "", "203.0.113.9", "---"},
        {true, "", "dhcp", "", "", "203.0.113.9", "---"},
        {true, "F7", "static", "10.9.9.9", "0", "", "10.9.9.9"},
        {false, "F7", "static", "10.9.9.9", "", "203.0.113.9", "---"},
        {true, "FF", "static", "10.9.9.9", "", "203.0.113.9", "---"},
        {true, "F7", "static", "", "", "203.0.113.9", "---"},
        {true, "F7", "static", "255.255.255.2559", "", "", "255.255.255.255"},
        {true, "F7", "static", "255.255.255.25\xC3\xA9", "", "", "255.255.255.25"},
        {true, "F7", "static", huge, "", "", "777777777777777"},
        {true, "EF", "bpa", "", "0", "203.0.113.9", "---"},
        {true, "EF", "bpa", "", huge, "203.0.113.9", "203.0.113.9"},
        {true, "EF", "bpa", "", "", "203.0.113.9", "203.0.113.9"},
        {true, "EF", "pppoe", "", "0", "10.64.64.64", "---"},
        {true, "EF", "", "", "0", "1.1.1.100", "---"},
        {true, "EF", "statics", "10.9.9.9", "0", "1.1.1.1", "1.1.1.1"},
        {true, "EF", huge, "", "0", "255.255.255.255", "255.255.255.255"},
        {true, "EF", "dhcp", "", "", "", "---"},
    };
    for (const AddressCase &test : cases) {
        const TestRoot root;
        if (test.up)
            root.write("/tmp/wan_uptime", "");
        replay.trace = true;
        replay.outputs[REGISTER] = std::string(":4048 0x00") + test.link;
        replay.settings = {{"wan_ifname", "fifteen-letters" + huge},
                           {"wan_mode", test.mode},
                           {"wan_ipaddr", test.address},
                           {"bpa_login", test.login}};
        replay.interfaces["fifteen-letters"] = {test.interface_address, "255.0.0.0", "00:1f:33:8a:5f:2a", 1500};
        char text[20];
        EXPECT_EQ(printed([&] { EXPECT_EQ(get_wan_address_text(text), text); }),
                  test.up ? std::string("@0 pipe ") + REGISTER + "\n" : "");
        EXPECT_EQ(text, test.shown) << test.mode.substr(0, 20) << ' ' << test.link;
    }
}
