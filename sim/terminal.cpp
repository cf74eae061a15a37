#include "sim/terminal.h"

#include "sim/places.h"
#include "sim/router_time.h"

#include <csignal>
#include <poll.h>
#include <sys/signalfd.h>

namespace sim {

using namespace std::chrono_literals;

static constexpr auto REDRAW_PERIOD = 50ms;
static constexpr size_t KEPT_LINES = 200; // of the log
static constexpr const char *PAUSED = "pause";

Terminal::Terminal(Router &router, const std::string &address, const std::filesystem::path &log, Fd signals)
    : router_(router), output_(log), screen_(output_.terminal()), signals_(std::move(signals))
{
    view_.address = address;
    if (!screen_.unicode())
        view_.message = "This locale is not UTF-8: with LANG=C.UTF-8 the picture is made of blocks";
    thread_ = std::jthread([this](const std::stop_token &stop) { run(stop); });
}

void Terminal::run(const std::stop_token &stop)
{
    Time next = std::chrono::steady_clock::now();
    while (!stop.stop_requested()) {
        take_signals();
        while (const auto stroke = screen_.next_stroke())
            take_stroke(*stroke);
        const Time now = std::chrono::steady_clock::now();
        if (now >= next) {
            take_news();
            if (!drawn_)
                draw(screen_, view_);
            drawn_ = true;
            next = now + REDRAW_PERIOD;
        }
        wait(next);
    }
}

/* For a key or a signal. */
void Terminal::wait(Time until)
{
    const auto time = std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {signals_.get(), POLLIN, 0}};
    poll(sources, std::size(sources), static_cast<int>(std::max(0ms, time) / 1ms));
    /* Without a terminal nobody is left to end this program. */
    if (sources[0].revents & (POLLHUP | POLLERR)) {
        end();
        std::this_thread::sleep_for(REDRAW_PERIOD);
    }
}

void Terminal::take_signals()
{
    signalfd_siginfo signal;
    while (read(signals_.get(), &signal, sizeof signal) == sizeof signal) {
        if (signal.ssi_signo == SIGTSTP)
            stop();
        else if (signal.ssi_signo == SIGCONT)
            screen_.restore();
        else
            screen_.resize();
        drawn_ = false;
    }
}

/* This program, by the way that a signal from outside takes. */
void Terminal::end()
{
    kill(getpid(), SIGTERM);
}

void Terminal::stop()
{
    screen_.stop();
    screen_.restore();
}

static std::string log_line(const Happening &happening)
{
    return std::to_string(happening.tick / TICKS_PER_SECOND) + "." + std::to_string(happening.tick % TICKS_PER_SECOND) +
           " " + happening.text;
}

void Terminal::take_news()
{
    const uint64_t seconds = router_.clock().ticks() / TICKS_PER_SECOND;
    const News news = router_.feed().news();
    const std::string fault = tasks_.take_fault();
    if (news == view_.news && seconds == view_.seconds && fault.empty())
        return;
    if (*news.state != *view_.news.state)
        view_.rows = menu_rows(*news.state);
    view_.selected = std::min(view_.selected, view_.rows.size() - 1);
    view_.news = news;
    view_.seconds = seconds;
    view_.speed = value_of(SPEED_INPUT);
    if (!fault.empty())
        view_.message = fault;
    for (const Happening &each : router_.feed().happenings(next_happening_, KEPT_LINES)) {
        next_happening_ = each.id + 1;
        if (each.kind == Happened::PRINT || each.kind == Happened::ROUTER)
            view_.log.push_back(log_line(each));
    }
    while (view_.log.size() > KEPT_LINES)
        view_.log.pop_front();
    drawn_ = false;
}

std::string Terminal::value_of(const std::string &id) const
{
    const auto value = view_.news.state->values.find(id);
    return value == view_.news.state->values.end() ? "" : value->second;
}

void Terminal::give(const std::string &id, const std::string &value)
{
    tasks_.ask([this, id, value] {
        router_.note_input(value.empty() ? id : id + " " + value);
        set_input(router_, *find_input(id), value);
    });
}

void Terminal::step(const std::string &id, int steps, bool wraps)
{
    const std::string value = value_of(id), other = stepped(*find_input(id), value, steps, wraps);
    if (other != value)
        give(id, other);
}

void Terminal::pause()
{
    const std::string speed = value_of(SPEED_INPUT);
    if (speed != PAUSED)
        speed_before_pause_ = speed;
    give(SPEED_INPUT, speed == PAUSED ? speed_before_pause_ : PAUSED);
}

} // namespace sim
