#include "status/network_status.h"

#include "tests/support/test_root.h"

static void write_status(const TestRoot &root, const std::string &name, const std::string &text)
{
    root.write("/tmp/lcd/network_status/" + name, text);
}

TEST(NetworkStatus, ClassifiesValues)
{
    const struct {
        std::string line;
        int shown, state, count;
    } cases[] = {
        {"lan=onward", 0, STATUS_ON, 0},
        {"lan offline\n", 1, STATUS_OFF, 0},
        {"lan 3\n", 0, STATUS_ON, 3},
        {"lan 0", 1, STATUS_OFF, 0},
        {"lan 99999999999", 0, STATUS_ON, 2147483647},
        {"lan", 1, STATUS_OFF, 0},
        {"", 1, STATUS_OFF, 0},
        {"lan  on", 1, 1, 0}, // anything else: as it is shown
        {"lan ON", 0, 0, 0},
        {std::string(500, 'x'), 1, 1, 0},
    };
    const TestRoot root;
    for (const auto &test : cases) {
        reset_network_status();
        network_status_table[STATUS_LAN].shown = test.shown;
        write_status(root, "lan", test.line);
        int count = -1;
        read_network_status(&count);
        EXPECT_EQ(network_status_table[STATUS_LAN].state, test.state) << test.line;
        EXPECT_EQ(count, test.count) << test.line;
    }
}

TEST(NetworkStatus, BlinksHiddenDrawnDrawn)
{
    const TestRoot root;
    reset_network_status();
    std::string phases;
    const auto redraw = [&](int times) {
        for (int count; times > 0; times--) {
            read_network_status(&count);
            update_status_phases();
            phases += network_status_table[STATUS_WAN].shown ? '#' : '.';
        }
    };
    write_status(root, "wan", "wan on");
    redraw(1);
    write_status(root, "wan", "wan blink");
    redraw(7);
    std::filesystem::remove(root.path("/tmp/lcd/network_status/wan"));
    redraw(2);
    EXPECT_EQ(phases, "#.##.##...") << "without its file it freezes in the phase shown last";
}

TEST(NetworkStatus, ChecksTheConnection)
{
    const struct {
        const char *gateway, *internet, *wan;
        bool link, up;
    } cases[] = {
        {"1", "internet off", "wan off", true, true},   {"0", "internet blink", "wan off", false, false},
        {"", "internet on\n", "wan blink", true, true}, {"0", "", "", false, false},
        {"0", "internet", "wan", true, false},
    };
    const TestRoot root;
    for (const auto &test : cases) {
        replay.settings["wifi_if_on"] = test.gateway;
        write_status(root, "internet", test.internet);
        write_status(root, "wan", test.wan);
        EXPECT_EQ(check_connection().link, test.link) << test.internet << '/' << test.wan;
        EXPECT_EQ(check_connection().internet, test.up) << test.internet << '/' << test.wan;
    }
}
