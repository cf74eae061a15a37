/* The simulated router: its root folder, its time, its programs and its panel. */
#pragma once

#include "sim/clock.h"
#include "sim/feed.h"
#include "sim/parameters.h"
#include "sim/root.h"
#include "sim/router_processes.h"
#include "sim/traffic.h"
#include "sim/wps.h"

#include <atomic>
#include <ctime>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace sim {

class Router {
public:
    /* As Root; every input has its initial value, but settings that flash holds have theirs. */
    Router(const std::filesystem::path &dir, const RootSources &sources);

    /* Switches the router on and keeps it running until `signals` (a signalfd that SIGCHLD comes to as well) yields a
     * signal that ends this program. */
    void run(const Fd &signals);

    const std::filesystem::path &root() const { return root_.dir(); }
    Clock &clock() { return clock_; }
    Feed &feed() { return feed_; }
    Parameters &parameters() { return parameters_; }

    /* What follows is for any thread. */

    /* The router's wall clock: seconds since the epoch. */
    time_t time() const;
    void set_time(time_t seconds);

    /* Presses a key of the panel. */
    void press(std::string_view key);
    /* Announces an event. */
    void announce(std::string_view event);
    /* Sends `signal` to the daemon. */
    void signal_daemon(int signal) const { processes_.signal_daemon(signal); }

    /* Puts a file with `text` below the root, or removes it. Throws std::system_error. */
    void write(const std::string &name, std::string_view text);
    void remove(const std::string &name);

private:
    void power_on();
    void write_time() const;
    void tick(uint64_t ticks);
    void pass_second(uint64_t second);
    void hand_out_leases() const;
    void act_on_input(std::string_view action);
    void look();
    bool take_signals(const Fd &signals);
    void take_frames();
    void take_messages();
    void take_output();
    void obey(const std::string &message);
    void reboot();
    void restart_daemon();
    void report(const std::string &line) const;

    Root root_;
    Feed feed_;
    Parameters parameters_;
    Fd display_;
    Fd control_;
    std::mutex files_mutex_; // one writer at a time below the root, and one user of what follows
    Traffic traffic_;
    WpsService wps_;
    std::atomic<time_t> start_time_ = std::time(nullptr); // the wall clock at tick 0
    std::chrono::steady_clock::time_point looked_;        // when the inputs' values were last read
    std::string output_line_;                             // what the programs have begun to print
    std::optional<uint64_t> restart_at_;                  // the tick that starts a daemon which has ended
    RouterProcesses processes_;
    Clock clock_; // last: it stops before what it drives goes
};

} // namespace sim
