#include "platform/desk/settings_file.h"
#include "tests/sim/simulator.h"

#include <fstream>

/* The daemon's watchdog looks once in 60 s, not before tick 601. */
TEST(Router, AKilledCompanionComesBackByTheWatchdog)
{
    Simulator simulator;
    const pid_t killed = simulator.pid_of("network_status");
    kill(killed, SIGKILL);
    ASSERT_TRUE(eventually([&] { return simulator.pid_of("network_status") != killed; }));
    EXPECT_EQ(simulator.set("link.wan", "off"), 204);
    EXPECT_TRUE(eventually([&] { return simulator.file("tmp/lcd/network_status/wan") == "wan off\n"; }));
    EXPECT_GT(simulator.ticks(), 600u);
    EXPECT_EQ(simulator.file("tmp/lcd/lcd_debug_process"), "network_status\n");
}

TEST(Router, RebootBringsTheCommittedSettingsBack)
{
    Simulator simulator("1");
    const auto exists = [&](const char *file) { return std::filesystem::exists(simulator.root() / file); };
    simulator.set("wifi.channel", "11");
    const std::string running = simulator.root() / "nvram/running", committed = simulator.root() / "nvram/committed";
    ASSERT_EQ(settings_copy({AT_FDCWD, running.c_str()}, {AT_FDCWD, committed.c_str()}), 0);
    simulator.set("wifi.name", "lost");
    for (const char *file : {"tmp/left", "var/wps_success"})
        std::ofstream(simulator.root() / file) << "in memory";
    EXPECT_TRUE(exists("tmp/wan_uptime"));
    simulator.set("wan.up", "off");
    simulator.set("panel.factory", "on");
    const pid_t daemon = simulator.pid_of("frontpaneld"), companion = simulator.pid_of("network_status");

    simulator.run("sbin/reboot");
    for (const auto &[program, old] : {std::pair("frontpaneld", daemon), std::pair("network_status", companion)})
        EXPECT_TRUE(eventually([&] { return simulator.pid_of(program) > 0 && simulator.pid_of(program) != old; }));
    EXPECT_TRUE(simulator.has("\"wifi_ssid\":\"Home network\""));
    EXPECT_TRUE(simulator.has("\"wifi_channel\":\"11\""));
    EXPECT_FALSE(exists("tmp/left") || exists("var/wps_success"));
    EXPECT_FALSE(exists("tmp/wan_uptime")); // what is so is found to be so again
    EXPECT_TRUE(exists("var/is_default_for_lcd"));
}

TEST(Router, NothingIsLeftAtTheEnd)
{
    for (const int signal : {SIGTERM, SIGKILL}) {
        Simulator simulator;
        kill(simulator.pid_of("frontpaneld"), SIGKILL); // the next one has another process group
        simulator.end(signal);
        EXPECT_TRUE(eventually([&] { return sim::router_processes(simulator.root()).empty(); })) << signal;
    }
}

TEST(Router, TheTemporaryRootGoesAtTheEnd)
{
    const TempFolder folder;
    const pid_t pid = start_panel_sim({"--port", "0"}, folder / "log");
    std::string line;
    ASSERT_TRUE(eventually([&] {
        std::ifstream log(folder / "log");
        return std::getline(log, line) && !log.eof();
    }));
    const std::filesystem::path root = line.substr(line.rfind(' ') + 1);
    EXPECT_TRUE(std::filesystem::exists(root / "sbin/lcd_ml")) << line;
    kill(pid, SIGTERM);
    EXPECT_EQ(end_of(pid), 0);
    EXPECT_FALSE(std::filesystem::exists(root));
}

TEST(Router, RefusesABadStart)
{
    Simulator simulator("1");
    const TempFolder folder;
    const std::string here = folder / ".", log = folder / "log";
    folder.write("tmp/precious", "mine");
    const std::string world =
        folder.write("my.world", "# first\nmoon.phase full\nlink.wan up\nlink.lan\nlink.clients 1000\nkey.ok\n"
                                 "link.power on\n\nlink.power off\nsetting. x\nwifi.name a\\q\n");
    const struct {
        std::vector<std::string> options;
        int status;
        std::vector<std::string> messages;
    } starts[] = {
        {{"--speed", "0"}, 2, {"--speed takes one of pause, 1, 10, 100, not \"0\""}},
        {{"--world", "atlantis"}, 2, {"busy-evening, cable-pulled, first-use, guests, healthy-home"}},
        {{"--world", world},
         2,
         {world + ":2: no input moon.phase", world + ":3: link.wan takes one of off, on, blink, not \"up\"",
          world + ":4: link.lan takes one of off, on, blink, not \"\"", world + ":5: link.clients takes a number",
          world + ":6: key.ok is an action", world + ":9: link.power has its value in line 7",
          world + ":10: no input setting.", world + ":11: wifi.name takes the escapes"}},
        {{"--port", "65536"}, 2, {"--port takes"}},
        {{"--daemon", here + "/none"}, 2, {"no program"}},
        {{"--assets", here}, 2, {"sbin/lcd_ml"}},
        {{"--zoom", "3"}, 2, {"--help"}},
        {{"extra"}, 2, {"extra"}},
        {{"--root", here}, 1, {"not empty"}},
        {{"--root", simulator.root()}, 1, {"another simulator"}},
        {{"--root", here + "/a:b"}, 1, {"colon"}},
    };
    for (const auto &[options, status, messages] : starts) {
        std::filesystem::remove(log);
        EXPECT_EQ(WEXITSTATUS(end_of(start_panel_sim(options, log))), status) << messages[0];
        const std::string printed = sim::read_file(log).value_or("");
        for (const std::string &message : messages)
            EXPECT_NE(printed.find(message), std::string::npos) << message << "\n" << printed;
    }
    EXPECT_EQ(sim::read_file(folder / "tmp/precious"), "mine");
    EXPECT_FALSE(std::filesystem::exists(here + "/a:b"));
}
