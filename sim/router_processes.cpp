#include "sim/router_processes.h"

#include "sim/processes.h"
#include "sim/root.h"
#include "sim/router_files.h"
#include "sim/spawn.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>

namespace sim {

using namespace std::chrono_literals;

static constexpr const char *companions[] = {"usr/sbin/network_status", "usr/sbin/pc_monitor"};

static constexpr auto PATIENCE = 2s;  // a daemon that is busy for so long is stopped
static constexpr auto END_LIMIT = 5s; // a process that lives on after this hangs in the kernel

RouterProcesses::RouterProcesses(const std::filesystem::path &root) : root_(root)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) < 0)
        fail("pipe");
    output_ = Fd(ends[0]);
    input_ = Fd(ends[1]);
    fcntl(output_.get(), F_SETFL, O_NONBLOCK);
    prctl(PR_SET_CHILD_SUBREAPER, 1);
}

RouterProcesses::~RouterProcesses()
{
    end();
}

pid_t RouterProcesses::start_program(const char *program, pid_t group) const
{
    const std::string root_variable = std::string(ROOT_VARIABLE) + "=" + root_.string();
    return spawn({.arguments = {root_ / program},
                  .environment = environment_with({root_variable, "PANEL_CLOCK=simulator", "PANEL_WATCHED=yes"}),
                  .group = group,
                  .output = input_.get()});
}

void RouterProcesses::start_daemon()
{
    const std::lock_guard lock(mutex_);
    daemon_ = group_ = start_program(DAEMON_PROGRAM, 0);
    waits_ = sleeps_ = stopped_ = false;
}

void RouterProcesses::start()
{
    start_daemon();
    for (const char *companion : companions)
        start_program(companion, group_);
}

void RouterProcesses::signal_daemon(int signal) const
{
    const std::lock_guard lock(mutex_);
    if (daemon_ > 0)
        kill(daemon_, signal);
}

bool RouterProcesses::await_rest()
{
    std::unique_lock lock(mutex_);
    const auto rests = [this] { return waits_ || sleeps_ || daemon_ <= 0; };
    stopped_ = !changed_.wait_for(lock, stopped_ ? 0s : PATIENCE, rests);
    return waits_ && daemon_ > 0;
}

void RouterProcesses::send_tick()
{
    {
        const std::lock_guard lock(mutex_);
        waits_ = false;
        if (daemon_ > 0)
            kill(daemon_, SIGALRM);
    }
    await_rest();
}

void RouterProcesses::take(const Telling &telling)
{
    const std::lock_guard lock(mutex_);
    if (telling.kind == "waits")
        waits_ = true;
    else if (telling.kind == "runs")
        sleeps_ = telling.name.starts_with("sleep ");
    else if (telling.kind == "ran")
        sleeps_ = false;
    else
        return;
    changed_.notify_all();
}

std::optional<int> RouterProcesses::reap()
{
    const std::lock_guard lock(mutex_);
    std::optional<int> daemon_end;
    int status;
    for (pid_t ended; (ended = waitpid(-1, &status, WNOHANG)) > 0;) {
        if (ended != daemon_)
            continue;
        daemon_ = 0;
        daemon_end = status;
        changed_.notify_all();
    }
    return daemon_end;
}

/* Whether nothing was left to be killed. */
bool RouterProcesses::kill_all() const
{
    bool none = group_ == 0 || kill(-group_, SIGKILL) < 0;
    for (const RouterProcess &process : router_processes(root_)) {
        kill(process.pid, SIGKILL);
        none = false;
    }
    return none;
}

void RouterProcesses::end()
{
    const auto limit = std::chrono::steady_clock::now() + END_LIMIT;
    /* Again and again: a shell may just have started the next program of its command. */
    while (!kill_all() && std::chrono::steady_clock::now() < limit) {
        reap();
        std::this_thread::sleep_for(2ms);
    }
    reap();
    group_ = 0;
}

} // namespace sim
