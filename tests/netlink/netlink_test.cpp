/* The router's own daemon on a kernel's real netlink, in namespaces where its real paths are the test's: the same
 * pictures as in the replay, and what it does without a driver or a process list. */
#include "platform/desk/settings_file.h"
#include "replay/router_files.h"
#include "replay/script.h"
#include "tests/netlink/real_daemon.h"
#include "tests/replay/program.h"

#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr const char *ASSETS = BUILT_ROOT "/sbin/lcd_ml", *ASSETS_PLACE = "/sbin/lcd_ml";
static constexpr const char *ACTION_FILE = "/tmp/lcd/lcd_action";
static constexpr unsigned TWO_STEPS = 2 * 61; // of the splash, in ticks
static constexpr int SKIPPED = 77;

struct Output {
    std::vector<std::string> frames;
    std::string messages;
};

static Output replayed(const std::string &scenario, bool with_assets)
{
    const TestRoot root;
    if (with_assets)
        root.link_assets();
    const std::string trace = root.path("/trace").string();
    const std::string command = PANEL_REPLAY " --root " + root.path("/").string() + " " + scenario + " > " + trace;
    EXPECT_EQ(std::system(command.c_str()), 0) << scenario;
    Output output;
    std::ifstream file(trace);
    for (std::string line; std::getline(file, line);) {
        if (line.find(" frame ") != line.npos)
            output.frames.push_back(line);
        else if (!line.starts_with('@'))
            output.messages += line + '\n';
    }
    return output;
}

/* One line of a scenario as the world around the daemon does it. */
static void play_line(const PrivateRoot &root, RealDaemon &daemon, const std::vector<std::string> &words)
{
    const std::string &command = words[0];
    if (command == "nvram") {
        const std::string store = root.path("/tmp/nvram").string();
        ASSERT_EQ(settings_set({AT_FDCWD, store.c_str()}, words[1].c_str(), words[2].c_str()), 0);
    } else if (command == "file") {
        ASSERT_EQ(write_router_file(words[1], words[2]), "");
    } else if (command == "start") {
        daemon.start();
    } else if (command == "pass") {
        daemon.pass(words.size() > 1 ? static_cast<unsigned>(std::stoul(words[1])) : 1);
    } else if (command == "key") {
        ASSERT_EQ(write_router_file(ACTION_FILE, words[1] + '\n'), "");
        daemon.announce_input();
    } else {
        /* What panel-replay alone looks at. */
        ASSERT_TRUE(command == "expect" || command == "output") << command;
    }
}

static Output played(const std::string &scenario, bool with_assets)
{
    const PrivateRoot root;
    open_router_root(root.path("/"));
    if (with_assets)
        root.bind(ASSETS, ASSETS_PLACE);
    RealDaemon daemon(root);
    daemon.open_driver();
    std::ifstream file(scenario);
    for (std::string line; std::getline(file, line);)
        if (const ScriptLine script = split_line(line); !script.words.empty())
            play_line(root, daemon, script.words);
    return {daemon.frames(), daemon.printed()};
}

TEST(Netlink, CarriesThePicturesOfTheReplay)
{
    const struct {
        const char *scenario;
        bool with_assets;
    } cases[] = {
        {"startup_factory", true},
        {"startup_language", true},
        {"splash_to_menu", true},
        {"splash_to_menu", false},
    };
    for (const auto &[name, with_assets] : cases) {
        const std::string scenario = SOURCE_DIR "/tests/scenarios/" + std::string(name) + ".scenario";
        const Output expected = replayed(scenario, with_assets), real = played(scenario, with_assets);
        EXPECT_GT(expected.frames.size(), 10u);
        EXPECT_EQ(real.frames, expected.frames) << name;
        EXPECT_EQ(real.messages, expected.messages) << name;
    }
}

TEST(Netlink, CarriesPicturesOnceThereIsADriver)
{
    const std::string message = "write_lcd_data: can not create a netlink socket\n";
    const PrivateRoot root;
    root.bind(ASSETS, ASSETS_PLACE);
    RealDaemon daemon(root);
    daemon.start();
    daemon.pass(TWO_STEPS);
    const std::string complaints = daemon.printed();
    EXPECT_TRUE(complaints.ends_with(message + message)) << complaints;
    daemon.open_driver();
    daemon.pass(TWO_STEPS);
    EXPECT_GE(daemon.frames().size(), 2u);
    EXPECT_EQ(daemon.printed(), complaints);
}

TEST(Netlink, OutlivesTheReaderOfItsMessages)
{
    const PrivateRoot root;
    const std::string output = root.path(RealDaemon::OUTPUT);
    ASSERT_EQ(mkfifo(output.c_str(), 0600), 0);
    const int reader = open(output.c_str(), O_RDWR | O_CLOEXEC);
    RealDaemon daemon(root);
    daemon.start();
    close(reader);
    daemon.pass(TWO_STEPS); // without a driver, each has a message
}

/* A process that the list shows as `name`, until it is killed. */
static pid_t run_under_name(const char *name)
{
    const pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error("no process");
    if (pid > 0)
        return pid;
    prctl(PR_SET_NAME, name);
    for (;;)
        pause();
}

TEST(Companions, AreSeenInTheProcessList)
{
    const PrivateRoot root;
    RealDaemon daemon(root);
    const auto restarts = [&] { return read_file(root.path("/tmp/lcd/lcd_debug_process")); };
    daemon.open_driver();
    daemon.start(); // a sanitizer needs /proc until here
    root.mount_memory("/proc");
    daemon.pass(601);
    EXPECT_EQ(restarts(), "network_status\npc_monitor\n") << "nothing can be seen to run";
    root.bind("/proc", "/proc");
    const pid_t companions[] = {run_under_name("network_status"), run_under_name("pc_monitor")};
    daemon.pass(601);
    EXPECT_EQ(restarts(), "network_status\npc_monitor\n");
    for (const pid_t pid : companions) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const std::string reason = enter_namespaces();
    if (!reason.empty()) {
        std::cerr << "skipped: " << reason << '\n';
        return SKIPPED;
    }
    return RUN_ALL_TESTS();
}
