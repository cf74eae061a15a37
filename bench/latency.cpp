/* How long a key press takes to become a picture, on the desk daemon with its real tick. */
#include "bench/desk_daemon.h"
#include "bench/figures.h"

#include <chrono>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

static constexpr int KEYS = 500;
static constexpr double MOST_MEDIAN_MILLISECONDS = 2;
static constexpr double MOST_99TH_MILLISECONDS = 10;

/* In milliseconds. */
struct KeyTime {
    double taken;
    double waited; // of that for a processor
};

/* The time from a key's signal to the picture that it changes. Redraws that a tick has caused meanwhile show what was
 * shown before. */
static KeyTime time_key(const DeskDaemon &daemon, const char *key, std::string &shown)
{
    for (std::string picture; !(picture = daemon.waiting_picture()).empty();)
        if (picture != shown)
            throw std::runtime_error("the menu changes without a key");
    const double waited = daemon.processor_wait();
    const auto pressed = daemon.press(key);
    std::string picture;
    do
        picture = daemon.next_picture();
    while (picture == shown);
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - pressed;
    shown = picture;
    return {taken.count(), daemon.processor_wait() - waited};
}

static std::vector<KeyTime> press_keys(const DeskDaemon &daemon, std::string shown)
{
    const std::jthread ticker([&](std::stop_token stop) {
        for (; !stop.stop_requested(); std::this_thread::sleep_for(100ms))
            daemon.tick();
    });
    std::mt19937 random(1);
    std::uniform_int_distribution<int> phase(10000, 110000); // microseconds, all of a tick
    std::vector<KeyTime> times;
    for (int i = 0; i < KEYS; i++) {
        std::this_thread::sleep_for(std::chrono::microseconds(phase(random)));
        times.push_back(time_key(daemon, i % 2 == 0 ? "down" : "up", shown));
    }
    return times;
}

static void print_times(const std::vector<KeyTime> &times)
{
    std::vector<double> taken, alone;
    for (const KeyTime &time : times) {
        taken.push_back(time.taken);
        alone.push_back(time.taken - time.waited);
    }
    print_figure("key to picture: median", median(taken), "ms", MOST_MEDIAN_MILLISECONDS);
    print_figure("key to picture: 99 of 100 within", quantile(taken, 0.99), "ms", MOST_99TH_MILLISECONDS);
    print_figure("key to picture: 99 of 100 without waiting for a processor", quantile(alone, 0.99), "ms");
}

static void measure()
{
    const RouterFolder router;
    router.write("/tmp/lcd/network_status/internet", "internet on\n");
    router.write("/tmp/lcd/network_status/wan", "wan on\n");
    const DeskDaemon daemon(router);
    print_times(press_keys(daemon, daemon.open_menu()));
}

int main()
{
    try {
        measure();
    } catch (const std::exception &error) {
        fprintf(stderr, "bench-latency: %s\n", error.what());
        return 2;
    }
    return figures_status();
}
