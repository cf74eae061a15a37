/* An hour of the desk daemon in real time, with all that happens to it: traffic, companions that die, stops, clocks
 * that jump by years, storms of signals. It must lose no tick, no key, no memory, and be as quick afterwards as before.
 *
 *     bench-hour [MINUTES] */
#include "bench/desk_daemon.h"
#include "bench/figures.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

static constexpr int TICKS_PER_REDRAW = 6;
static constexpr int KEYS = 40; // of each look at the latency
static constexpr int DISTURBANCES = 4;
static constexpr int STORM_PER_SECOND = 10000;
static constexpr auto STORM_TIME = 10s;
static constexpr double MOST_STORM_LOSS = 1; // redraws at either end of the time watched
static constexpr double MOST_MEDIAN_MILLISECONDS = 2, MOST_GROWTH_KB = 8;

static const RouterFolder router;

/* What the router's other programs do: ten times a second the clock, once a second the traffic. */
class World
{
public:
    explicit World(const DeskDaemon &daemon)
        : daemon_(daemon), thread_([this](const std::stop_token &stop) { run(stop); })
    {
    }

    unsigned ticks() const { return ticks_; }
    void jump(time_t seconds) { offset_ += seconds; }

private:
    void run(const std::stop_token &stop)
    {
        for (auto next = Clock::now(); !stop.stop_requested(); std::this_thread::sleep_until(next += 100ms)) {
            if (ticks_ % 10 == 0)
                pass_second(ticks_ / 10);
            router.write("/run/clock", std::to_string(ticks_) + " " + std::to_string(time(nullptr) + offset_) + "\n");
            daemon_.tick();
            ++ticks_;
        }
    }
    static void pass_second(unsigned second)
    {
        const std::string folder = "/tmp/lcd/network_status/speed/";
        router.write(folder + "down", std::to_string(second * 7919 % 2000000) + "\n");
        router.write(folder + "up", std::to_string(second * 104729 % 300000) + "\n");
        router.write(folder + "pcs", "12 " + std::to_string(second * 31 % 500000) + "\n13 4096\n");
    }

    const DeskDaemon &daemon_;
    std::atomic<unsigned> ticks_ = 0;
    std::atomic<time_t> offset_ = 0;
    std::jthread thread_;
};

static std::string text_of(const fs::path &file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/* A companion runs while a file of its name is in run/alive. */
static void make_programs()
{
    const auto make = [](const std::string &path, const std::string &script) {
        router.write(path, "#!/bin/sh\n" + script);
        fs::permissions(router.path() / path.substr(1), fs::perms::owner_all);
    };
    make("/bin/ps", "/bin/ls " + (router.path() / "run/alive").string() + "\n");
    make("/bin/echo", "echo \"$@\"\n");
    for (const std::string name : {"network_status", "pc_monitor"})
        make("/usr/sbin/" + name, ": > " + (router.path() / "run/alive" / name).string() + "\n");
    router.write("/dev/null", ""); // commands write their errors there
    fs::create_directories(router.path() / "run/alive");
    for (const char *entry : {"internet", "wan", "wireless", "lan", "security"})
        router.write(std::string("/tmp/lcd/network_status/") + entry, std::string(entry) + " on\n");
}

struct Totals {
    std::vector<double> latencies; // of all keys but the first look's, in milliseconds
    double worst_loss = 0;         // redraws that a watched time lacked, or had too many
    int deaths = 0, stops = 0, jumps = 0, storms = 0;
    long signals = 0;
};

/* From a key to the other picture that it brings; the daemon goes on showing what it showed before. */
static double time_key(const DeskDaemon &daemon, const char *key)
{
    std::string shown, picture;
    while (!(picture = daemon.waiting_picture()).empty())
        shown = picture;
    const auto pressed = daemon.press(key);
    do {
        if (Clock::now() - pressed > 5s)
            throw std::runtime_error(std::string("the key ") + key + " was lost");
        picture = daemon.next_picture();
    } while (picture == shown);
    return std::chrono::duration<double, std::milli>(Clock::now() - pressed).count();
}

/* Keys in the menu, then home again. */
static std::vector<double> time_keys(const DeskDaemon &daemon)
{
    std::vector<double> times;
    time_key(daemon, "menu");
    for (int i = 0; i < KEYS; i++) {
        std::this_thread::sleep_for(37ms);
        times.push_back(time_key(daemon, i % 2 == 0 ? "down" : "up"));
    }
    time_key(daemon, "left");
    return times;
}

/* Counts redraws of the home screen while `run` goes on, against the ticks of that time. */
template <typename Run> static double redraws_lost(const DeskDaemon &daemon, const World &world, Run run)
{
    while (!daemon.waiting_picture().empty())
        continue;
    const unsigned before = world.ticks();
    int frames = 0;
    run([&] {
        while (!daemon.waiting_picture().empty())
            frames++;
    });
    const double expected = (world.ticks() - before) / static_cast<double>(TICKS_PER_REDRAW);
    return std::abs(expected - frames);
}

static void pass_quietly(const DeskDaemon &daemon, const World &world, std::chrono::seconds time, Totals &totals)
{
    const auto watch = [time](auto take) {
        for (const auto end = Clock::now() + time; Clock::now() < end; std::this_thread::sleep_for(50ms))
            take();
    };
    totals.worst_loss = std::max(totals.worst_loss, redraws_lost(daemon, world, watch));
}

/* Input signals that announce nothing, and at times a change of language. */
static void storm(const DeskDaemon &daemon, const World &world, Totals &totals)
{
    router.write("/tmp/lcd/lcd_action", "nothing\n");
    const auto blow = [&](auto take) {
        const auto begin = Clock::now();
        long sent = 0;
        while (Clock::now() - begin < STORM_TIME) {
            const long due = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin).count() *
                             STORM_PER_SECOND / 1000000;
            for (; sent < due; sent++)
                kill(daemon.pid(), sent % 100 == 0 ? SIGUSR2 : SIGUSR1);
            take();
            std::this_thread::sleep_for(100us);
        }
        totals.signals += sent;
    };
    totals.worst_loss = std::max(totals.worst_loss, redraws_lost(daemon, world, blow));
    totals.storms++;
}

static void stop_and_go_on(const DeskDaemon &daemon, Totals &totals)
{
    kill(daemon.pid(), SIGSTOP);
    std::this_thread::sleep_for(3s);
    kill(daemon.pid(), SIGCONT);
    totals.stops++;
}

/* To the clock's screen, where the other year shows, and home. */
static void jump(const DeskDaemon &daemon, World &world, time_t years, Totals &totals)
{
    time_key(daemon, "left");
    world.jump(years * 365 * 24 * 3600);
    std::this_thread::sleep_for(2s);
    time_key(daemon, "right");
    totals.jumps++;
}

static void disturb(int minute, const DeskDaemon &daemon, World &world, Totals &totals)
{
    switch (minute % DISTURBANCES) {
    case 0:
        fs::remove(router.path() / "run/alive" / (minute % (2 * DISTURBANCES) == 0 ? "network_status" : "pc_monitor"));
        totals.deaths++;
        break;
    case 1:
        stop_and_go_on(daemon, totals);
        break;
    case 2:
        jump(daemon, world, minute % (2 * DISTURBANCES) == 2 ? 9 : -9, totals);
        break;
    default:
        storm(daemon, world, totals);
    }
}

static double resident_kb(pid_t pid)
{
    const std::string status = text_of("/proc/" + std::to_string(pid) + "/status");
    return std::strtod(status.c_str() + status.find("VmRSS:") + 6, nullptr);
}

static auto open_files(pid_t pid)
{
    return std::distance(fs::directory_iterator("/proc/" + std::to_string(pid) + "/fd"), fs::directory_iterator());
}

static void report(const Totals &totals, const std::vector<double> &first, double growth, long descriptors)
{
    const std::string record = text_of(router.path() / "tmp/lcd/lcd_debug_process");
    const auto restarts = std::count(record.begin(), record.end(), '\n');
    printf("%d deaths of a companion, %d stops, %d jumps of nine years, %d storms of %ld signals together\n",
           totals.deaths, totals.stops, totals.jumps, totals.storms, totals.signals);
    print_figure("most redraws lost or too many in a time watched", totals.worst_loss, "", MOST_STORM_LOSS);
    print_figure("companions not started again", static_cast<double>(2 + totals.deaths - restarts), "", 1);
    print_figure("key to picture at first: median", median(first), "ms", MOST_MEDIAN_MILLISECONDS);
    print_figure("key to picture after each disturbance: median", median(totals.latencies), "ms",
                 MOST_MEDIAN_MILLISECONDS);
    print_figure("the same: 99 of 100 within", quantile(totals.latencies, 0.99), "ms");
    print_figure("keys pressed, none lost", static_cast<double>(totals.latencies.size()), "");
    print_figure("growth of resident memory", growth, "kB", MOST_GROWTH_KB);
    print_figure("descriptors left open", static_cast<double>(descriptors), "", 0);
}

static void watch(int minutes)
{
    make_programs();
    const DeskDaemon daemon(router);
    daemon.open_menu();
    World world(daemon);
    time_key(daemon, "left");
    const std::vector<double> first = time_keys(daemon);
    std::this_thread::sleep_for(65s); // both companions are started once
    Totals rehearsal;                 // the code of each disturbance is in memory from then on
    for (int minute = 1; minute < DISTURBANCES; minute++)
        disturb(minute, daemon, world, rehearsal);
    const double resident = resident_kb(daemon.pid());
    const auto descriptors = open_files(daemon.pid());
    Totals totals;
    for (int minute = 0; minute < minutes; minute++) {
        pass_quietly(daemon, world, 40s, totals);
        disturb(minute, daemon, world, totals);
        const std::vector<double> times = time_keys(daemon);
        totals.latencies.insert(totals.latencies.end(), times.begin(), times.end());
    }
    std::this_thread::sleep_for(65s);
    report(totals, first, resident_kb(daemon.pid()) - resident, open_files(daemon.pid()) - descriptors);
}

int main(int count, char **words)
try {
    char *end = nullptr;
    const long minutes = count > 1 ? strtol(words[1], &end, 10) : 60;
    if (count > 2 || minutes < 1 || minutes > 1000 || (end && *end != '\0'))
        throw std::invalid_argument("usage: bench-hour [MINUTES]");
    watch(static_cast<int>(minutes));
    return figures_status();
} catch (const std::exception &error) {
    fprintf(stderr, "bench-hour: %s\n", error.what());
    return 2;
}
