/* The simulated router: its root folder, its time, its programs and its panel. */
#pragma once

#include "sim/clock.h"
#include "sim/links.h"
#include "sim/root.h"
#include "sim/router_processes.h"
#include "sim/screen.h"

#include <array>
#include <ctime>
#include <mutex>
#include <string>
#include <string_view>

namespace sim {

/* The words that the daemon knows. */
constexpr std::array<std::string_view, 6> panel_keys = {"up", "down", "left", "right", "ok", "menu"};
constexpr std::array<std::string_view, 8> router_events = {
    "lost link",       "lost internet",      "restore internet", "save config start",
    "save config end", "setup wizard start", "setup wizard end", "info",
};

class Router {
public:
    /* As Root and Clock. Throws std::runtime_error. */
    Router(const std::filesystem::path &dir, const RootSources &sources, unsigned speed);

    /* Switches the router on and keeps it running until `signals` (a signalfd that SIGCHLD comes to as well) yields a
     * signal that ends this program. */
    void run(const Fd &signals);

    /* For any thread: presses a key, announces an event. False when there is none of that name. */
    bool press(std::string_view key);
    bool announce(std::string_view event);

    /* Names the operation that the event "info" tells of; for any thread. */
    void set_info(std::string_view text);

    const std::filesystem::path &root() const { return root_.dir(); }
    const Clock &clock() const { return clock_; }
    Screen &screen() { return screen_; }
    Links &links() { return links_; }

private:
    void tick(uint64_t ticks);
    void send_input(std::string_view action);
    bool take_signals(const Fd &signals);
    void take_frames();
    void take_messages();
    void take_output();
    void obey(const std::string &message);
    void reboot();
    void restart_daemon();
    void report(const std::string &line) const;

    Root root_;
    Screen screen_;
    Links links_;
    Fd display_;
    Fd control_;
    const time_t start_time_ = std::time(nullptr);
    std::mutex input_mutex_;     // one writer at a time of the files that the daemon reads
    std::string output_line_;    // what the programs have begun to print
    bool daemon_ended_ = false;  // it is to be started again
    RouterProcesses processes_;
    Clock clock_; // last: it stops before what it drives goes
};

} // namespace sim
