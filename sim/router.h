/* The simulated router: its root folder, its time, its programs and its panel. */
#pragma once

#include "sim/asset_faults.h"
#include "sim/clock.h"
#include "sim/feed.h"
#include "sim/parameters.h"
#include "sim/recorder.h"
#include "sim/root.h"
#include "sim/router_processes.h"
#include "sim/traffic.h"
#include "sim/upgrade.h"
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

    /* Presses a key of the panel, announces an event, tells the daemon that its language may have changed. A tick
     * brings it to the daemon at once; all three return when it has passed. */
    void press(std::string_view key);
    void announce(std::string_view event);
    void announce_language();

    /* Begins what the firmware does with the panel while it replaces itself. */
    void begin_upgrade();

    /* Changes or, without a `value`, removes a running setting. Throws std::system_error, as all that follow. */
    void change_setting(const std::string &key, const std::optional<std::string> &value);

    /* Puts a file with `text` below the root, or removes it. */
    void write(const std::string &name, std::string_view text);
    void remove(const std::string &name);

    /* Lets one of the daemon's pictures be missing ("": none), or its language pack in use be cut. */
    void remove_picture(const std::string &name);
    void cut_pack(bool cut);

    /* The scenario script of all that the daemon went through since its start. */
    std::string script() const { return recorder_.script(); }

    /* Tells that something was done from outside. */
    void note_input(std::string_view text) { feed_.happen(Happened::INPUT, text, clock_.ticks()); }

private:
    void power_on();
    void write_time() const;
    void tick(uint64_t ticks);
    void pass_second(uint64_t second);
    void hand_out_leases() const;
    void act_on_input(std::string_view action);
    void act_on_event(std::string_view event);
    void play_upgrade(uint64_t ticks);
    void bring_tick();
    void look();
    bool take_signals(const Fd &signals);
    void take_messages();
    void take_output();
    void obey(const std::string &message);
    void take_telling(const Telling &telling);
    void begin_recording();
    void reboot();
    void restart_daemon();
    void report(Happened kind, const std::string &line);

    Root root_;
    Feed feed_;
    Parameters parameters_;
    Fd control_;
    std::mutex inputs_mutex_; // one key or event at a time, until the daemon has taken it
    std::mutex files_mutex_;  // one writer at a time below the root, none in a pass; and one user of what follows
    AssetFaults assets_;
    Recorder recorder_;
    Upgrade upgrade_;
    Traffic traffic_;
    WpsService wps_;
    std::atomic<time_t> start_time_ = std::time(nullptr); // the wall clock at tick 0
    std::chrono::steady_clock::time_point looked_;        // when the inputs' values were last read
    std::string output_line_;                             // what the programs have begun to print
    std::atomic<bool> runs_ = false;                      // ticks come
    std::optional<uint64_t> restart_at_;                  // the tick that starts a daemon which has ended
    RouterProcesses processes_;
    Clock clock_; // last: it stops before what it drives goes
};

} // namespace sim
