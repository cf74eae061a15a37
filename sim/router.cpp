#include "sim/router.h"

#include "sim/control.h"
#include "sim/files.h"
#include "sim/local_socket.h"
#include "sim/places.h"
#include "sim/router_files.h"
#include "sim/router_time.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

namespace sim {

using namespace std::chrono_literals;

static constexpr const char *ACTION_FILE = "tmp/lcd/lcd_action";
static constexpr const char *EVENT_FILE = "tmp/lcd/lcd_event";
static constexpr const char *CLIENTS_INPUT = "link.clients";

static constexpr unsigned long DARK_REGISTER = 0xfff8000; // what switches the backlight off; any other value: on
static constexpr unsigned RESTART_DELAY = 10;             // ticks from the daemon's death to its next life
static constexpr size_t LINE_LIMIT = 4096;                // bytes of a printed line kept together
static constexpr auto LOOK_PERIOD = 50ms;                 // of the look at what the daemon may have changed

Router::Router(const std::filesystem::path &dir, const RootSources &sources)
    : root_(dir, sources), display_(bind_socket(root(), DISPLAY_SOCKET)), control_(bind_socket(root(), CONTROL_SOCKET)),
      wps_(root()), processes_(root())
{
    restore_settings(root(), default_settings());
    for (const Input &input : router_inputs())
        if (input.initial && input.place != &setting_place && input.place != &language_place)
            set_input(*this, input, input.initial);
}

void Router::run(const Fd &signals)
{
    write_time();
    pass_second(0);
    processes_.start();
    clock_.start([this](uint64_t ticks) { tick(ticks); });
    do {
        pollfd sources[] = {{signals.get(), POLLIN, 0},
                            {display_.get(), POLLIN, 0},
                            {control_.get(), POLLIN, 0},
                            {processes_.output().get(), POLLIN, 0}};
        poll(sources, std::size(sources), static_cast<int>(LOOK_PERIOD / 1ms));
        if (restart_at_ && clock_.ticks() >= *restart_at_)
            restart_daemon();
        take_frames();
        take_messages();
        take_output();
        look();
    } while (take_signals(signals));
}

/* On the clock's thread. */
void Router::tick(uint64_t ticks)
try {
    if (ticks % TICKS_PER_SECOND == 0)
        pass_second(ticks / TICKS_PER_SECOND);
    {
        const std::lock_guard lock(files_mutex_);
        write_time();
        const std::string done =
            wps_.tick(ticks, parameters_.text("wps.outcome"), parameters_.number("wps.seconds"));
        if (!done.empty())
            report(done);
    }
    processes_.send_tick();
} catch (const std::exception &error) {
    std::fprintf(stderr, "panel-sim: the router's root is gone: %s\n", error.what());
    kill(getpid(), SIGTERM);
}

void Router::pass_second(uint64_t second)
{
    const TrafficPlan plan = {.pattern = parameters_.text("traffic.pattern"),
                              .seed = static_cast<uint32_t>(parameters_.number("traffic.seed")),
                              .down = static_cast<uint32_t>(parameters_.number("traffic.down")),
                              .up = static_cast<uint32_t>(parameters_.number("traffic.up")),
                              .computers = static_cast<unsigned>(parameters_.number("computers.count")),
                              .come_and_go = parameters_.text("computers.come-and-go") == "on"};
    {
        const std::lock_guard lock(files_mutex_);
        for (const auto &[name, text] : traffic_.pass(plan, second))
            write_file(root() / SPEED_SOURCE / name, text);
        hand_out_leases();
    }
    if (plan.come_and_go)
        set_input(*this, *find_input(CLIENTS_INPUT), std::to_string(traffic_.wireless_computers()));
}

void Router::hand_out_leases() const
{
    const auto count = static_cast<unsigned>(parameters_.number("computers.count"));
    const auto nameless = static_cast<unsigned>(parameters_.number("computers.nameless"));
    const std::string leases = lease_file(count, nameless);
    if (read_file(root() / LEASES_FILE) != leases)
        write_file(root() / LEASES_FILE, leases);
}

time_t Router::time() const
{
    return start_time_ + static_cast<time_t>(clock_.ticks() / TICKS_PER_SECOND);
}

void Router::set_time(time_t seconds)
{
    const std::lock_guard lock(files_mutex_);
    start_time_ = seconds - static_cast<time_t>(clock_.ticks() / TICKS_PER_SECOND);
    write_time();
}

void Router::write_time() const
{
    write_router_time(root(), {clock_.ticks(), time()});
}

void Router::press(std::string_view key)
{
    const std::lock_guard lock(files_mutex_);
    act_on_input(key);
}

void Router::announce(std::string_view event)
{
    const std::lock_guard lock(files_mutex_);
    write_file(root() / EVENT_FILE, std::string(event) + "\n");
    act_on_input("event");
}

void Router::act_on_input(std::string_view action)
{
    write_file(root() / ACTION_FILE, std::string(action) + "\n");
    processes_.signal_daemon(SIGUSR1);
}

void Router::write(const std::string &name, std::string_view text)
{
    const std::lock_guard lock(files_mutex_);
    write_file(root() / name, text);
}

void Router::remove(const std::string &name)
{
    const std::lock_guard lock(files_mutex_);
    std::filesystem::remove(root() / name);
}

/* Tells everyone what the daemon and the router's other programs have changed. */
void Router::look()
{
    const auto now = std::chrono::steady_clock::now();
    if (now - looked_ < LOOK_PERIOD)
        return;
    looked_ = now;
    feed_.set_state(read_state(*this));
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
        restart_at_ = clock_.ticks() + RESTART_DELAY;
    }
    return true;
}

void Router::take_frames()
{
    /* Room for more than a frame: a longer message is none and must be seen to be longer. */
    while (const auto message = receive(display_, 2 * LCD_FRAME_BYTES))
        if (const auto pixels = frame_of(*message))
            feed_.show(*pixels, clock_.ticks());
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
        feed_.set_lit(std::strtoul(&message[REGISTER.size()], nullptr, 16) != DARK_REGISTER, clock_.ticks());
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

/* What tells of the router itself outlives its memory: its other programs make those files again. */
void Router::power_on()
{
    const std::map<std::string, std::string> values = read_state(*this).values;
    {
        const std::lock_guard lock(files_mutex_);
        root_.power_on();
        hand_out_leases();
        wps_.power_on();
    }
    restore_settings(root(), default_settings());
    for (const Input &input : router_inputs())
        if (input.place == &marker_place)
            set_input(*this, input, values.at(std::string(input.id)));
}

void Router::reboot()
{
    processes_.end();
    power_on();
    /* Nothing that the old programs have sent is the new ones'. */
    while (receive(control_, CONTROL_MESSAGE_LIMIT) || receive(display_, LCD_FRAME_BYTES))
        continue;
    feed_.set_lit(true, clock_.ticks());
    processes_.start();
    restart_at_.reset();
}

void Router::restart_daemon()
{
    /* A frame that its death cut short must not block all that follow. */
    std::filesystem::remove(root().string() + LCD_LOCK_FILE);
    processes_.start_daemon();
    restart_at_.reset();
}

void Router::report(const std::string &line) const
{
    const uint64_t ticks = clock_.ticks();
    std::printf("%llu.%llu %s\n", static_cast<unsigned long long>(ticks / TICKS_PER_SECOND),
                static_cast<unsigned long long>(ticks % TICKS_PER_SECOND), line.c_str());
}

} // namespace sim
