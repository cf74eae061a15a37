#include "tests/sim/simulator.h"

#include <fstream>

static std::filesystem::path write_world(const TestFolder &folder, const std::string &text)
{
    const std::filesystem::path path = folder.path() / "my.world";
    std::ofstream(path) << text;
    return path;
}

struct BadWorld {
    const char *text;
    const char *message; // behind the file's name
};

TEST(World, ABadOneIsToldByFileAndLine)
{
    const TestFolder folder;
    const BadWorld worlds[] = {
        {"# first\nmoon.phase full\n", ":2: no input moon.phase"},
        {"link.wan up", ":1: link.wan takes one of off, on, blink, not \"up\""},
        {"link.wan", ":1: link.wan takes one of off, on, blink, not \"\""},
        {"link.clients 1000", ":1: link.clients takes a number from 0 to 999, not \"1000\""},
        {"key.ok", ":1: key.ok is an action"},
        {"link.wan on\n\nlink.wan off", ":3: link.wan has its value in line 1"},
        {"setting. x", ":1: no input setting."},
        {"wifi.name a\\q", ":1: wifi.name takes the escapes"},
        {"link.wan up\nlink.lan up", ":2: link.lan takes"}, // all that is wrong at once
    };
    for (const BadWorld &world : worlds) {
        const std::string path = write_world(folder, world.text);
        const std::filesystem::path log = folder.path() / "log";
        EXPECT_EQ(WEXITSTATUS(end_of(start_panel_sim({"--world", path}, log))), 2) << world.text;
        const std::string printed = sim::read_file(log).value_or("");
        EXPECT_NE(printed.find(path + world.message), std::string::npos) << printed;
        std::filesystem::remove(log);
    }
}

/* Its settings are in flash too: a reboot does not leave the world. */
TEST(World, IsWhatTheRouterBeginsWith)
{
    const TestFolder folder;
    const std::string path = write_world(folder, "wifi.name Elsewhere\nlink.wan off\nclock.time 2024-12-24T18:00:00\n"
                                                 "clock.speed 10\npanel.factory on\ncomputers.count 1\n"
                                                 "setting.own 5\n");
    Simulator simulator("pause", path);
    for (const char *member : {"\"wifi.name\":\"Elsewhere\"", "\"link.wan\":\"off\"", "\"speed\":0",
                               "\"clock.time\":\"2024-12-24T18:00:00\"", "\"panel.factory\":\"on\"", "\"own\":\"5\""})
        EXPECT_TRUE(simulator.has(member)) << member << simulator.state();
    EXPECT_EQ(simulator.file("var/udhcpd.leases").size(), 0u) << "its one computer is nameless";
    EXPECT_NE(simulator.file("nvram/committed").find("wifi_ssid=Elsewhere\n"), std::string::npos);
}

TEST(World, IsEnteredByARunningRouter)
{
    Simulator simulator("pause");
    simulator.set("link.lan", "off");
    simulator.set("fault.bitmap", "ICON_MODEM");
    EXPECT_EQ(simulator.get("/worlds").body,
              "[\"busy-evening\",\"cable-pulled\",\"first-use\",\"guests\",\"healthy-home\"]\n");
    for (const char *world : {"busy-evening", "cable-pulled", "first-use", "healthy-home", "guests"})
        EXPECT_EQ(simulator.post("/world", world), 204);
    for (const char *member : {"\"guest.access\":\"on\"", "\"link.lan\":\"on\"", "\"wifi.name\":\"Home network\"",
                               "\"fault.bitmap\":\"none\"", "\"speed\":0"})
        EXPECT_TRUE(simulator.has(member)) << member << simulator.state();
    EXPECT_NE(simulator.file("nvram/committed").find("wifi_gacable=1\n"), std::string::npos);
}
