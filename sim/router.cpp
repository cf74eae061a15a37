#include "sim/router.h"

#include "sim/control.h"
#include "sim/files.h"
#include "sim/local_socket.h"
#include "sim/places.h"
#include "sim/router_files.h"
#include "sim/router_time.h"
#include "sim/text.h"

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
static constexpr const char *INFO_FILE = "tmp/lcd/lcd_info";
static constexpr const char *LANGUAGE_KEY = "language_lcd";
static constexpr const char *LOCK_INPUT = "fault.lock";
static constexpr const char *CLIENTS_INPUT = "link.clients";

static constexpr unsigned long DARK_REGISTER = 0xfff8000; // what switches the backlight off; any other value: on
static constexpr unsigned RESTART_DELAY = 10;             // ticks from the daemon's death to its next life
static constexpr size_t LINE_LIMIT = 4096;                // bytes of a printed line kept together
static constexpr auto LOOK_PERIOD = 50ms;                 // of the look at what the daemon may have changed

Router::Router(const std::filesystem::path &dir, const RootSources &sources)
    : root_(dir, sources), control_(bind_socket(root(), CONTROL_SOCKET)), assets_(root()), wps_(root()),
      processes_(root())
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
    begin_recording();
    processes_.start();
    runs_ = true;
    clock_.start([this](uint64_t ticks) { tick(ticks); });
    do {
        pollfd sources[] = {{signals.get(), POLLIN, 0},
                            {control_.get(), POLLIN, 0},
                            {processes_.output().get(), POLLIN, 0}};
        poll(sources, std::size(sources), static_cast<int>(LOOK_PERIOD / 1ms));
        if (restart_at_ && clock_.ticks() >= *restart_at_)
            restart_daemon();
        take_messages();
        take_output();
        look();
    } while (take_signals(signals));
    /* Nobody waits for a daemon that nobody hears. */
    processes_.end();
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
            report(Happened::ROUTER, done);
        play_upgrade(ticks);
        if (processes_.await_rest()) {
            recorder_.begin_pass();
            processes_.send_tick();
        }
    }
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

/* A tick of its own brings an input to the daemon at once, and none to a router that is not on yet. */
void Router::bring_tick()
{
    if (runs_)
        clock_.advance(1);
}

void Router::press(std::string_view key)
{
    const std::lock_guard input(inputs_mutex_);
    {
        const std::lock_guard lock(files_mutex_);
        act_on_input(key);
    }
    bring_tick();
}

void Router::announce(std::string_view event)
{
    const std::lock_guard input(inputs_mutex_);
    {
        const std::lock_guard lock(files_mutex_);
        act_on_event(event);
    }
    bring_tick();
}

void Router::announce_language()
{
    {
        const std::lock_guard lock(files_mutex_);
        recorder_.note("signal language");
        processes_.signal_daemon(SIGUSR2);
    }
    bring_tick();
}

void Router::act_on_event(std::string_view event)
{
    write_file(root() / EVENT_FILE, std::string(event) + "\n");
    act_on_input("event");
}

void Router::act_on_input(std::string_view action)
{
    write_file(root() / ACTION_FILE, std::string(action) + "\n");
    processes_.signal_daemon(SIGUSR1);
}

void Router::begin_upgrade()
{
    const std::lock_guard lock(files_mutex_);
    upgrade_.begin(clock_.ticks() + 1);
}

void Router::play_upgrade(uint64_t ticks)
{
    const UpgradeStep *step = upgrade_.step(ticks);
    if (!step)
        return;
    report(Happened::ROUTER, "firmware: " + std::string(step->info ? step->info : "done"));
    if (step->info)
        write_file(root() / INFO_FILE, std::string(step->info) + "\n");
    else
        tell_simulator(root(), "reboot");
    if (step->announced)
        act_on_event("info");
}

void Router::change_setting(const std::string &key, const std::optional<std::string> &value)
{
    const std::lock_guard lock(files_mutex_);
    if (value)
        write_setting(root(), key, *value);
    else
        remove_setting(root(), key);
}

void Router::remove_picture(const std::string &name)
{
    const std::lock_guard lock(files_mutex_);
    for (const std::string &line : assets_.remove_picture(name))
        recorder_.note(line);
}

void Router::cut_pack(bool cut)
{
    const std::lock_guard lock(files_mutex_);
    for (const std::string &line : assets_.cut_pack(cut ? read_settings(root())[LANGUAGE_KEY] : ""))
        recorder_.note(line);
}

void Router::write(const std::string &name, std::string_view text)
{
    const std::lock_guard lock(files_mutex_);
    write_file(root() / name, text);
}

void Router::remove(const std::string &name)
{
    const std::lock_guard lock(files_mutex_);
    remove_file(root() / name);
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
        const bool killed = WIFSIGNALED(*status);
        report(Happened::ROUTER, killed ? "the daemon was ended by signal " + std::to_string(WTERMSIG(*status))
                                        : "the daemon ended with status " + std::to_string(WEXITSTATUS(*status)));
        restart_at_ = clock_.ticks() + RESTART_DELAY;
    }
    return true;
}

void Router::take_messages()
{
    while (const auto message = receive(control_, CONTROL_MESSAGE_LIMIT))
        obey(*message);
}

void Router::obey(const std::string &message)
{
    static constexpr std::string_view REGISTER = "register";
    if (const auto pixels = frame_of(message)) {
        feed_.show(*pixels, clock_.ticks());
        return;
    }
    const Telling telling = parse_telling(message);
    if (telling.kind != "reboot" && telling.kind != REGISTER && telling.kind != "rc") {
        take_telling(telling);
        return;
    }
    report(Happened::ROUTER, message);
    if (telling.kind == "reboot")
        reboot();
    else if (telling.kind == REGISTER)
        feed_.set_lit(std::strtoul(telling.name.c_str(), nullptr, 16) != DARK_REGISTER, clock_.ticks());
}

void Router::take_telling(const Telling &telling)
{
    const auto &[kind, name, text] = telling;
    if (kind == "set")
        feed_.happen(Happened::SETTING, name + " " + escaped(text), clock_.ticks());
    else if (kind == "commit")
        feed_.happen(Happened::SETTING, kind, clock_.ticks());
    else if (kind == "runs" || kind == "captures")
        feed_.happen(Happened::COMMAND, name, clock_.ticks());
    recorder_.take(telling, clock_.ticks());
    processes_.take(telling);
}

void Router::take_output()
{
    char piece[LINE_LIMIT];
    for (ssize_t size; (size = read(processes_.output().get(), piece, sizeof piece)) > 0;) {
        for (const char c : std::string_view(piece, static_cast<size_t>(size))) {
            if (c != '\n')
                output_line_ += c;
            if (c == '\n' || output_line_.size() == LINE_LIMIT) {
                report(Happened::PRINT, output_line_);
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
        upgrade_.end();
        parameters_.set(LOCK_INPUT, "no"); // it was in memory
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
    while (receive(control_, CONTROL_MESSAGE_LIMIT))
        continue;
    feed_.set_lit(true, clock_.ticks());
    begin_recording();
    processes_.start();
    restart_at_.reset();
}

/* Before the daemon starts. */
void Router::begin_recording()
{
    const std::lock_guard lock(files_mutex_);
    recorder_.begin(root(), clock_.ticks(), assets_.lines());
}

void Router::restart_daemon()
{
    /* A frame that its death cut short must not block all that follow. */
    if (parameters_.text(LOCK_INPUT) == "no")
        remove(&LCD_LOCK_FILE[1]);
    begin_recording();
    processes_.start_daemon();
    report(Happened::ROUTER, "the daemon starts again");
    restart_at_.reset();
}

/* Tells it on standard output and on the time line. */
void Router::report(Happened kind, const std::string &line)
{
    const uint64_t ticks = clock_.ticks();
    feed_.happen(kind, line, ticks);
    std::printf("%llu.%llu %s\n", static_cast<unsigned long long>(ticks / TICKS_PER_SECOND),
                static_cast<unsigned long long>(ticks % TICKS_PER_SECOND), line.c_str());
}

} // namespace sim
