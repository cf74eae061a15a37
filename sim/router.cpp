#include "sim/router.h"

#include "sim/control.h"
#include "sim/files.h"
#include "sim/local_socket.h"
#include "sim/router_files.h"
#include "sim/router_time.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

namespace sim {

static constexpr const char *ACTION_FILE = "tmp/lcd/lcd_action";
static constexpr const char *EVENT_FILE = "tmp/lcd/lcd_event";
static constexpr const char *INFO_FILE = "tmp/lcd/lcd_info";

static constexpr unsigned long DARK_REGISTER = 0xfff8000; // what switches the backlight off; any other value: on
static constexpr unsigned RESTART_DELAY = 10;             // ticks from the daemon's death to its next life
static constexpr size_t LINE_LIMIT = 4096;                // bytes of a printed line kept together

Router::Router(const std::filesystem::path &dir, const RootSources &sources, unsigned speed)
    : root_(dir, sources), links_(root()), display_(bind_socket(root(), DISPLAY_SOCKET)),
      control_(bind_socket(root(), CONTROL_SOCKET)), processes_(root()), clock_(speed)
{
}

void Router::run(const Fd &signals)
{
    write_router_time(root(), {0, start_time_});
    processes_.start();
    clock_.start([this](uint64_t ticks) { tick(ticks); });
    const auto delay = std::chrono::ceil<std::chrono::milliseconds>(clock_.lasting(RESTART_DELAY));
    do {
        pollfd sources[] = {{signals.get(), POLLIN, 0},
                            {display_.get(), POLLIN, 0},
                            {control_.get(), POLLIN, 0},
                            {processes_.output().get(), POLLIN, 0}};
        const int ready = poll(sources, std::size(sources), daemon_ended_ ? static_cast<int>(delay.count()) : -1);
        if (ready == 0)
            restart_daemon();
        take_frames();
        take_messages();
        take_output();
    } while (take_signals(signals));
}

/* On the clock's thread. */
void Router::tick(uint64_t ticks)
try {
    write_router_time(root(), {ticks, start_time_ + static_cast<time_t>(ticks / TICKS_PER_SECOND)});
    processes_.signal_daemon(SIGALRM);
} catch (const std::exception &error) {
    std::fprintf(stderr, "panel-sim: the router's root is gone: %s\n", error.what());
    kill(getpid(), SIGTERM);
}

bool Router::press(std::string_view key)
{
    if (std::find(panel_keys.begin(), panel_keys.end(), key) == panel_keys.end())
        return false;
    const std::lock_guard lock(input_mutex_);
    send_input(key);
    return true;
}

bool Router::announce(std::string_view event)
{
    if (std::find(router_events.begin(), router_events.end(), event) == router_events.end())
        return false;
    const std::lock_guard lock(input_mutex_);
    write_file(root() / EVENT_FILE, std::string(event) + "\n");
    send_input("event");
    return true;
}

void Router::send_input(std::string_view action)
{
    write_file(root() / ACTION_FILE, std::string(action) + "\n");
    processes_.signal_daemon(SIGUSR1);
}

void Router::set_info(std::string_view text)
{
    const std::lock_guard lock(input_mutex_);
    write_file(root() / INFO_FILE, std::string(text) + "\n");
}

/* False when this program is to end. */
bool Router::take_signals(const Fd &signals)
{
    signalfd_siginfo signal;
    while (read(signals.get(), &signal, sizeof signal) == sizeof signal)
        if (signal.ssi_signo != SIGCHLD)
            return false;
    if (const auto status = processes_.reap()) {
        report(WIFSIGNALED(*status) ? "the daemon was ended by signal " + std::to_string(WTERMSIG(*status))
                                    : "the daemon ended with status " + std::to_string(WEXITSTATUS(*status)));
        daemon_ended_ = true;
    }
    return true;
}

void Router::take_frames()
{
    /* Room for more than a frame: a longer message is none and must be seen to be longer. */
    while (const auto message = receive(display_, 2 * LCD_FRAME_BYTES))
        if (const auto pixels = frame_of(*message))
            screen_.show(*pixels, clock_.ticks());
}

void Router::take_messages()
{
    while (const auto message = receive(control_, CONTROL_MESSAGE_LIMIT))
        obey(*message);
}

void Router::obey(const std::string &message)
{
    static constexpr std::string_view REGISTER = "register ";
    report(message);
    if (message == "reboot")
        reboot();
    else if (message.starts_with(REGISTER))
        screen_.set_lit(std::strtoul(&message[REGISTER.size()], nullptr, 16) != DARK_REGISTER, clock_.ticks());
}

void Router::take_output()
{
    char piece[LINE_LIMIT];
    for (ssize_t size; (size = read(processes_.output().get(), piece, sizeof piece)) > 0;) {
        for (const char c : std::string_view(piece, static_cast<size_t>(size))) {
            if (c != '\n')
                output_line_ += c;
            if (c == '\n' || output_line_.size() == LINE_LIMIT) {
                report(output_line_);
                output_line_.clear();
            }
        }
    }
}

void Router::reboot()
{
    processes_.end();
    {
        const std::lock_guard lock(input_mutex_);
        root_.power_on();
    }
    /* Nothing that the old programs have sent is the new ones'. */
    while (receive(control_, CONTROL_MESSAGE_LIMIT) || receive(display_, LCD_FRAME_BYTES))
        continue;
    screen_.set_lit(true, clock_.ticks());
    processes_.start();
    daemon_ended_ = false;
}

void Router::restart_daemon()
{
    /* A frame that its death cut short must not block all that follow. */
    std::filesystem::remove(root().string() + LCD_LOCK_FILE);
    processes_.start_daemon();
    daemon_ended_ = false;
}

void Router::report(const std::string &line) const
{
    const uint64_t ticks = clock_.ticks();
    std::printf("%llu.%llu %s\n", static_cast<unsigned long long>(ticks / TICKS_PER_SECOND),
                static_cast<unsigned long long>(ticks % TICKS_PER_SECOND), line.c_str());
}

} // namespace sim
