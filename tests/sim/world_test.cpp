#include "tests/sim/simulator.h"

/* Its settings are in flash too: a reboot does not leave the world. */
static void expect_world(Simulator &simulator, std::initializer_list<const char *> members, const char *committed)
{
    for (const char *member : members)
        EXPECT_TRUE(simulator.has(member)) << member << simulator.state();
    EXPECT_NE(simulator.file("nvram/committed").find(committed), std::string::npos);
}

TEST(World, IsWhatTheRouterBeginsWithUntilItEntersAnother)
{
    const TempFolder folder;
    const std::string path =
        folder.write("my.world", "wifi.name Elsewhere\nlink.wan off\nclock.time 2024-12-24T18:00:00\nclock.speed 10\n"
                                 "panel.factory on\ncomputers.count 1\nsetting.own 5\nfault.bitmap ICON_MODEM\n");
    Simulator simulator("pause", path);
    expect_world(simulator,
                 {"\"wifi.name\":\"Elsewhere\"", "\"link.wan\":\"off\"", "\"speed\":0", "\"panel.factory\":\"on\"",
                  "\"clock.time\":\"2024-12-24T18:00:00\"", "\"own\":\"5\"", "\"fault.bitmap\":\"ICON_MODEM\""},
                 "wifi_ssid=Elsewhere\n");
    EXPECT_EQ(simulator.file("var/udhcpd.leases").size(), 0u) << "its one computer is nameless";

    for (const char *world : {"busy-evening", "cable-pulled", "first-use", "healthy-home", "guests"})
        EXPECT_EQ(simulator.post("/world", world), 204);
    expect_world(simulator,
                 {"\"guest.access\":\"on\"", "\"link.wan\":\"on\"", "\"wifi.name\":\"Home network\"", "\"speed\":0",
                  "\"panel.factory\":\"off\"", "\"fault.bitmap\":\"none\""},
                 "wifi_gacable=1\n");
}
