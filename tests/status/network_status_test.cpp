#include "status/network_status.h"

#include "tests/support/test_root.h"

static void write_status(const TestRoot &root, const std::string &name, const std::string &text)
{
    root.write("/tmp/lcd/network_status/" + name, text);
}

TEST(NetworkStatus, ClassifiesValues)
{
    struct ValueCase {
        std::string line;
        int shown, state, count;
    };
    const ValueCase cases[] = {
        {"lan on\n", 0, STATUS_ON, 0},
        {"lan=onward", 0, STATUS_ON, 0},
        {"lan off", 1, STATUS_OFF, 0},
        {"lan offline\n", 1, STATUS_OFF, 0},
        {"lan blink", 0, STATUS_BLINK, 0},
        {"lan 3\n", 0, STATUS_ON, 3},
        {"lan 0", 1, STATUS_OFF, 0},
        {"lan 99999999999", 0, STATUS_ON, 2147483647},
        {"lan", 1, STATUS_OFF, 0},
        {"", 1, STATUS_OFF, 0},
        {"la", 1, STATUS_OFF, 0},
        {"lan  on", 1, 1, 0},
        {"lan  on", 0, 0, 0},
        {"lan \n", 1, 1, 0},
        {"lan -2", 1, 1, 0},
        {"lan ON", 0, 0, 0},
        {std::string(500, 'x'), 1, 1, 0},
    };
    const TestRoot root;
    for (const ValueCase &test : cases) {
        reset_network_status();
        network_status_table[STATUS_LAN].shown = test.shown;
        write_status(root, "lan", test.line);
        int count = -1;
        read_network_status(&count);
        EXPECT_EQ(network_status_table[STATUS_LAN].state, test.state) << test.line;
        EXPECT_EQ(count, test.count) << test.line;
    }
}

TEST(NetworkStatus, TheLastNumberCountsTheClients)
{
    const TestRoot root;
    write_status(root, "internet", "internet 9");
    write_status(root, "wireless_client", "wireless_client 4");
    int count;
    read_network_status(&count);
    EXPECT_EQ(count, 4);
}

TEST(NetworkStatus, BlinksHiddenDrawnDrawn)
{
    const TestRoot root;
    reset_network_status();
    NetworkStatusEntry &wan = network_status_table[STATUS_WAN];
    std::string phases;
    const auto redraw = [&] {
        int count;
        read_network_status(&count);
        update_status_phases();
        phases += wan.shown ? '#' : '.';
    };
    write_status(root, "wan", "wan on");
    redraw();
    write_status(root, "wan", "wan blink");
    for (int i = 0; i < 7; i++)
        redraw();
    EXPECT_EQ(phases, "#.##.##.");
    std::filesystem::remove(root.path("/tmp/lcd/network_status/wan"));
    redraw();
    redraw();
    EXPECT_EQ(phases, "#.##.##...") << "without its file it freezes in the phase shown last";
    reset_network_status();
    phases.clear();
    write_status(root, "wan", "wan blink");
    for (int i = 0; i < 4; i++)
        redraw();
    EXPECT_EQ(phases, "##.#");
}

TEST(NetworkStatus, ChecksTheConnection)
{
    struct ConnectionCase {
        const char *gateway, *internet, *wan; // null file: missing
        bool link, up;
    };
    const ConnectionCase cases[] = {
        {"1", nullptr, nullptr, true, true},
        {"0", "internet on", "wan on", true, true},
        {"0", "internet off", "wan on", true, false},
        {"0", nullptr, nullptr, false, false},
        {"0", "internet blink", "wan off", false, false},
        {"", "internet on\n", "wan blink", true, true},
        {"0", "", "", false, false},
        {"0", "internet", "wan", true, false},
    };
    for (const ConnectionCase &test : cases) {
        const TestRoot root;
        replay.settings["wifi_if_on"] = test.gateway;
        if (test.internet)
            write_status(root, "internet", test.internet);
        if (test.wan)
            write_status(root, "wan", test.wan);
        const Connection connection = check_connection();
        EXPECT_EQ(connection.link, test.link) << test.internet << '/' << test.wan;
        EXPECT_EQ(connection.internet, test.up) << test.internet << '/' << test.wan;
    }
}
