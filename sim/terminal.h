/* The panel in a terminal: the LCD, the keys, every input, and the last lines that the router has reported. */
#pragma once

#include "sim/router.h"
#include "sim/terminal_tasks.h"
#include "sim/terminal_view.h"

#include <chrono>
#include <csignal>
#include <thread>

namespace sim {

constexpr const char *SPEED_INPUT = "clock.speed";

/* The signals that a terminal panel takes, to be kept from every thread. */
constexpr int TERMINAL_SIGNALS[] = {SIGTSTP, SIGCONT, SIGWINCH};

class Terminal {
public:
    /* Shows `router` and the `address` of its page ("": none), while it lives; what the program prints goes to the file
     * `log` ("": nowhere). `signals` (a signalfd) yields TERMINAL_SIGNALS. Throws std::runtime_error. */
    Terminal(Router &router, const std::string &address, const std::filesystem::path &log, Fd signals);

private:
    using Time = std::chrono::steady_clock::time_point;

    void run(const std::stop_token &stop);
    void wait(Time until);
    void take_signals();
    void take_news();
    void end();
    void stop();
    void take_stroke(const Stroke &stroke);
    bool take_common_stroke(const Stroke &stroke);
    void take_panel_stroke(const Stroke &stroke);
    void take_menu_stroke(const Stroke &stroke);
    void take_typing_stroke(const Stroke &stroke);
    void move(int rows);
    void move_group(int direction);
    void enter();
    void remove();
    void finish_typing();
    void step(const std::string &id, int steps, bool wraps);
    void pause();
    void give(const std::string &id, const std::string &value);
    std::string value_of(const std::string &id) const;
    const MenuRow &row() const { return view_.rows[view_.selected]; }
    std::optional<Input> selected_input() const { return find_input(row().id); }

    Router &router_;
    const OutputElsewhere output_;
    const Screen screen_;
    const Fd signals_;
    TerminalView view_;
    bool drawn_ = false;               // all that view_ holds
    uint64_t next_happening_ = 1;      // id
    std::string speed_before_pause_ = "1";
    Tasks tasks_;
    std::jthread thread_; // last: it ends before what it uses goes
};

} // namespace sim
