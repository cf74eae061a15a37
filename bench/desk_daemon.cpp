#include "bench/desk_daemon.h"

#include "sim/local_socket.h"
#include "sim/spawn.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>

using namespace std::chrono_literals;

static constexpr size_t HEADER_BYTES = 16; // of a frame's message
static constexpr size_t MESSAGE_BYTES = HEADER_BYTES + 1024;
static constexpr int SPLASH_FRAMES = 11; // one for each length of its bar
static constexpr int MOST_SPLASH_TICKS = 20000;
static constexpr int PATIENCE_MILLISECONDS = 10000;

DeskDaemon::DeskDaemon(const RouterFolder &router)
    : router_(router), display_(sim::bind_socket(router.path(), "run/lcd"))
{
    const sim::Fd nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    pid_ = sim::spawn(
        {.arguments = {BUILT_BIN "/frontpaneld-desk"},
         .environment = sim::environment_with({"PANEL_ROOT=" + router.path().string(), "PANEL_CLOCK=simulator"}),
         .output = nowhere.get()});
}

DeskDaemon::~DeskDaemon()
{
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
}

void DeskDaemon::tick() const
{
    kill(pid_, SIGALRM);
}

std::chrono::steady_clock::time_point DeskDaemon::press(std::string_view key) const
{
    router_.write("/tmp/lcd/lcd_action", key);
    const auto now = std::chrono::steady_clock::now();
    kill(pid_, SIGUSR1);
    return now;
}

std::string DeskDaemon::waiting_picture() const
{
    std::string message = sim::receive(display_, MESSAGE_BYTES).value_or("");
    return message.erase(0, HEADER_BYTES);
}

std::string DeskDaemon::next_picture() const
{
    pollfd display = {.fd = display_.get(), .events = POLLIN, .revents = 0};
    if (poll(&display, 1, PATIENCE_MILLISECONDS) != 1)
        throw std::runtime_error("the daemon shows nothing");
    return waiting_picture();
}

std::string DeskDaemon::open_menu() const
{
    next_picture();
    int frames = 1;
    for (int ticks = 0; frames <= SPLASH_FRAMES; ticks++) {
        if (ticks == MOST_SPLASH_TICKS)
            throw std::runtime_error("the splash does not end");
        tick();
        std::this_thread::sleep_for(200us);
        while (!waiting_picture().empty())
            frames++;
    }
    std::this_thread::sleep_for(100ms);
    while (!waiting_picture().empty())
        continue;
    press("menu");
    return next_picture();
}

double DeskDaemon::processor_wait() const
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
