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
    const std::string running = simulator.root() / "nvram/running", committed = simulator.root() / "nvram/committed";
    ASSERT_EQ(settings_set({AT_FDCWD, running.c_str()}, "wifi_channel", "11"), 0);
    ASSERT_EQ(settings_copy({AT_FDCWD, running.c_str()}, {AT_FDCWD, committed.c_str()}), 0);
    ASSERT_EQ(settings_set({AT_FDCWD, running.c_str()}, "wifi_ssid", "lost"), 0);
    EXPECT_TRUE(simulator.has("\"wifi_ssid\":\"lost\""));
    std::ofstream(simulator.root() / "tmp/left") << "in memory";
    std::ofstream(simulator.root() / "var/wps_success") << "in memory";
    EXPECT_EQ(simulator.set("panel.factory", "on"), 204);
    EXPECT_EQ(simulator.set("wan.up", "off"), 204);
    const pid_t daemon = simulator.pid_of("frontpaneld"), companion = simulator.pid_of("network_status");

    simulator.run("sbin/reboot");
    EXPECT_TRUE(eventually([&] {
        return simulator.pid_of("frontpaneld") > 0 && simulator.pid_of("frontpaneld") != daemon &&
               simulator.pid_of("network_status") > 0 && simulator.pid_of("network_status") != companion;
    }));
    EXPECT_TRUE(simulator.has("\"wifi_ssid\":\"Home network\""));
    EXPECT_TRUE(simulator.has("\"wifi_channel\":\"11\""));
    EXPECT_FALSE(std::filesystem::exists(simulator.root() / "tmp/left"));
    EXPECT_FALSE(std::filesystem::exists(simulator.root() / "var/wps_success"));
    EXPECT_TRUE(simulator.has("\"panel.factory\":\"on\"")); // what is so is found to be so again
    EXPECT_TRUE(simulator.has("\"wan.up\":\"off\""));
}

TEST(Router, ADeadDaemonIsStartedAgainAmidItsCompanions)
{
    Simulator simulator;
    const pid_t daemon = simulator.pid_of("frontpaneld"), companion = simulator.pid_of("network_status");
    std::ofstream(simulator.root() / "tmp/lcd/lcd_wp") << "";
    kill(daemon, SIGKILL);
    EXPECT_TRUE(eventually([&] {
        const pid_t next = simulator.pid_of("frontpaneld");
        return next > 0 && next != daemon;
    }));
    EXPECT_EQ(simulator.pid_of("network_status"), companion);
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(simulator.root() / "tmp/lcd/lcd_wp"); }));
}

TEST(Router, NothingIsLeftAtTheEnd)
{
    for (const int signal : {SIGTERM, SIGINT, SIGKILL}) {
        Simulator simulator;
        kill(simulator.pid_of("frontpaneld"), SIGKILL); // the next one has another process group
        simulator.end(signal);
        EXPECT_TRUE(eventually([&] { return sim::router_processes(simulator.root()).empty(); })) << signal;
    }
}

TEST(Router, TheTemporaryRootGoesAtTheEnd)
{
    const TestFolder folder;
    const std::filesystem::path log = folder.path() / "log";
    const pid_t pid = start_panel_sim({"--port", "0"}, log);
    const auto printed = [&] { return sim::read_file(log).value_or(""); };
    ASSERT_TRUE(eventually([&] { return printed().find('\n') != std::string::npos; }));
    const std::string line = printed().substr(0, printed().find('\n'));
    const std::filesystem::path root = line.substr(line.rfind(' ') + 1);
    EXPECT_TRUE(std::filesystem::exists(root / "sbin/lcd_ml")) << line;
    kill(pid, SIGTERM);
    EXPECT_EQ(end_of(pid), 0);
    EXPECT_FALSE(std::filesystem::exists(root));
}

struct BadStart {
    std::vector<std::string> options;
    int status;
    const char *message;
};

TEST(Router, RefusesABadStart)
{
    Simulator simulator("1");
    const TestFolder folder;
    std::filesystem::create_directory(folder.path() / "tmp");
    std::ofstream(folder.path() / "tmp/precious") << "mine";
    const std::string here = folder.path();
    const BadStart starts[] = {
        {{"--speed", "0"}, 2, "--speed takes one of pause, 1, 10, 100, not \"0\""},
        {{"--world", "atlantis"}, 2, "healthy-home"},
        {{"--port", "65536"}, 2, "--port takes"},
        {{"--daemon", here + "/none"}, 2, "no program"},
        {{"--assets", here}, 2, "sbin/lcd_ml"},
        {{"--zoom", "3"}, 2, "--help"},
        {{"extra"}, 2, "extra"},
        {{"--root", here}, 1, "not empty"},
        {{"--root", simulator.root()}, 1, "another simulator"},
        {{"--root", here + "/a:b"}, 1, "colon"},
    };
    for (const BadStart &start : starts) {
        const std::filesystem::path log = folder.path() / "log";
        const int status = end_of(start_panel_sim(start.options, log));
        EXPECT_EQ(WEXITSTATUS(status), start.status) << start.message;
        const std::string printed = sim::read_file(log).value_or("");
        EXPECT_NE(printed.find(start.message), std::string::npos) << printed;
        std::filesystem::remove(log);
    }
    EXPECT_EQ(sim::read_file(folder.path() / "tmp/precious"), "mine");
}
