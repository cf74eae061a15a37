#include "sim/inputs.h"
#include "tests/sim/simulator.h"

TEST(Inputs, TakeTheirRangesAndNothingElse)
{
    const struct {
        const char *id;
        std::vector<std::string> good, bad;
    } ranges[] = {
        {"wifi.channel-in-use", {"1", "196"}, {"", "0", "-1", "+1", "1x", " 1", "197", "99999999999999999999"}},
        {"info.text",
         {"", "caf\xc3\xa9 \\\\ \\xff \\\"1\\\"", std::string(199, 'x')},
         {"\\q", "\\x00", std::string(1, '\0'), std::string(200, 'x')}},
        {"wan.address", {"0.0.0.0", "255.255.255.255"}, {"", "1.2.3", "1.2.3.256", "1.2.3.4 ", {"1.2.3.4\0x", 9}}},
        {"clock.time",
         {"1970-01-01T00:00:00", "2024-02-29T23:59", "2037-12-31T23:59:59"},
         {"", "now", "2024-02-30T00:00:00", "1969-12-31T23:59:59", "2038-02-01T00:00:00", "2024-01-01T00:00:00Z",
          "2037-1-31T23:59", "2037-01-31T23:9:59"}},
    };
    for (const auto &[id, good, bad] : ranges) {
        for (const std::string &value : good)
            EXPECT_EQ(sim::fault_of(*sim::find_input(id), value), "") << id;
        for (const std::string &value : bad)
            EXPECT_TRUE(sim::fault_of(*sim::find_input(id), value).starts_with("takes ")) << id << " " << value;
    }
}

/* What the daemon finds, and what is told of it. */
TEST(Inputs, ReachTheFilesOfTheDaemon)
{
    Simulator simulator("1");
    const struct {
        const char *id, *value, *file, *line;
    } effects[] = {
        {"link.clients", "0", "tmp/lcd/network_status/wireless_client", "wireless_client 0\n"},
        {"info.text", "Upgrading Firmware", "tmp/lcd/lcd_info", "Upgrading Firmware\n"},
        {"wan.address", "10.64.64.64", "etc/interfaces", "wan0 10.64.64.64 255.255.255.0 00:1f:33:8a:5f:2a 1500\n"},
        {"computers.count", "253", "tmp/lcd/network_status/speed/pcs", "\n254 "},
        {"wifi.radio", "off", "nvram/running", "\nwifi_dot11_mode=0\n"},
        {"wifi.name", "a\\nb\\xff", "nvram/running", "\nwifi_ssid=a\\nb\xff\n"},
        {"setting.new_key", "1 = 1", "nvram/running", "new_key=1 = 1\n"},
        {"setting.wifi_bandwidth", "4", "nvram/running", "\nwifi_bandwidth=4\n"},
    };
    for (const auto &[id, value, file, line] : effects) {
        EXPECT_EQ(simulator.set(id, value), 204) << id;
        EXPECT_TRUE(eventually([&] { return simulator.file(file).find(line) != std::string::npos; }))
            << id << ": " << simulator.file(file);
    }
    EXPECT_TRUE(simulator.has("\"wifi_ssid\":\"a\\\\nb\\\\xff\"")) << simulator.state();
    EXPECT_TRUE(simulator.has("\"wifi.width\":\"4\"")); // a value that the list does not know is told as it is
    EXPECT_EQ(simulator.client->Delete("/input/setting.new_key")->status, 204);
    EXPECT_FALSE(simulator.has("new_key"));
}
