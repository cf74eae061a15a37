/* How long a key press takes to become a picture, on the desk daemon with its real tick. */
#include "bench/figures.h"
#include "bench/router_folder.h"
#include "sim/fd.h"
#include "sim/local_socket.h"
#include "sim/spawn.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

static constexpr int KEYS = 500;
static constexpr double MOST_MEDIAN_MILLISECONDS = 2;
static constexpr double MOST_99TH_MILLISECONDS = 10;
static constexpr size_t HEADER_BYTES = 16; // of a frame's message
static constexpr size_t MESSAGE_BYTES = HEADER_BYTES + 1024;
static constexpr int SPLASH_FRAMES = 11; // one for each length of its bar
static constexpr int MOST_SPLASH_TICKS = 20000;
static constexpr int PATIENCE_MILLISECONDS = 10000;

/* A daemon whose ticks this program sends: the splash is over when it has sent enough of them. */
class Daemon
{
public:
    explicit Daemon(const RouterFolder &router) : router_(router), display_(sim::bind_socket(router.path(), "run/lcd"))
    {
        const sim::Fd nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
        pid_ = sim::spawn(
            {.arguments = {BUILT_BIN "/frontpaneld-desk"},
             .environment = sim::environment_with({"PANEL_ROOT=" + router.path().string(), "PANEL_CLOCK=simulator"}),
             .output = nowhere.get()});
    }
    ~Daemon()
    {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

    void tick() const { kill(pid_, SIGALRM); }

    /* Announces a key; the time at which it did. */
    std::chrono::steady_clock::time_point press(std::string_view key) const
    {
        router_.write("/tmp/lcd/lcd_action", key);
        const auto now = std::chrono::steady_clock::now();
        kill(pid_, SIGUSR1);
        return now;
    }

    /* A picture that has come already; "" when none has. */
    std::string waiting_picture() const
    {
        std::string message = sim::receive(display_, MESSAGE_BYTES).value_or("");
        return message.erase(0, HEADER_BYTES);
    }

    /* The next picture. Throws when none comes. */
    std::string next_picture() const
    {
        pollfd display = {.fd = display_.get(), .events = POLLIN, .revents = 0};
        if (poll(&display, 1, PATIENCE_MILLISECONDS) != 1)
            throw std::runtime_error("the daemon shows nothing");
        return waiting_picture();
    }

    /* How long the daemon and this program together have waited for a processor that others had, in milliseconds. */
    double processor_wait() const
    {
        double wait = 0;
        for (const std::string &process : {std::to_string(pid_), std::string("thread-self")}) {
            std::ifstream statistics("/proc/" + process + "/schedstat");
            double running = 0, waiting = 0; // nanoseconds
            statistics >> running >> waiting;
            wait += waiting * 1e-6;
        }
        return wait;
    }

private:
    const RouterFolder &router_;
    const sim::Fd display_;
    pid_t pid_;
};

/* Ticks the splash away and opens the main menu. Its picture. */
static std::string open_menu(const Daemon &daemon)
{
    daemon.next_picture();
    int frames = 1;
    for (int ticks = 0; frames <= SPLASH_FRAMES; ticks++) {
        if (ticks == MOST_SPLASH_TICKS)
            throw std::runtime_error("the splash does not end");
        daemon.tick();
        std::this_thread::sleep_for(200us);
        while (!daemon.waiting_picture().empty())
            frames++;
    }
    std::this_thread::sleep_for(100ms);
    while (!daemon.waiting_picture().empty())
        continue;
    daemon.press("menu");
    return daemon.next_picture();
}

/* In milliseconds. */
struct KeyTime {
    double taken;
    double waited; // of that for a processor
};

/* The time from a key's signal to the picture that it changes. Redraws that a tick has caused meanwhile show what was
 * shown before. */
static KeyTime time_key(const Daemon &daemon, const char *key, std::string &shown)
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

static std::vector<KeyTime> press_keys(const Daemon &daemon, std::string shown)
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
    const Daemon daemon(router);
    print_times(press_keys(daemon, open_menu(daemon)));
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
