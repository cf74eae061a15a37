/* What runs on the router: the display daemon, the companions that the router's init starts beside it, and all that
 * they start. */
#pragma once

#include "sim/control.h"
#include "sim/fd.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <optional>
#include <sys/types.h>

namespace sim {

class RouterProcesses {
public:
    /* For the router at `root`. This program becomes the reaper of all that its children leave behind. */
    explicit RouterProcesses(const std::filesystem::path &root);
    /* Ends all. */
    ~RouterProcesses();

    /* Starts the daemon and both companions. The thread that calls this and start_daemon must live as long as they. */
    void start();

    /* Starts the daemon alone, after its death. */
    void start_daemon();

    /* Sends `signal` to the daemon; nothing when it does not run. Any thread may call it. */
    void signal_daemon(int signal) const;

    /* Waits until the daemon waits for its next tick. False when it will not for now: it does not run, is stopped, or
     * has the shell sleep. */
    bool await_rest();

    /* Gives the daemon a tick and waits as await_rest does. */
    void send_tick();

    /* What the daemon has told. */
    void take(const Telling &telling);

    /* Buries children that have ended. How the daemon ended, as waitpid tells, when it is among them. */
    std::optional<int> reap();

    /* Ends the daemon and everything that was started below the root, and waits until nothing of it is left. */
    void end();

    /* Where what they print can be read. */
    const Fd &output() const { return output_; }

private:
    pid_t start_program(const char *program, pid_t group) const;
    bool kill_all() const;

    const std::filesystem::path root_;
    mutable std::mutex mutex_; // held while a process id may become another's
    std::condition_variable changed_;
    pid_t daemon_ = 0;         // 0: it does not run
    pid_t group_ = 0;          // of the last daemon
    bool waits_ = false;       // the daemon: for a tick
    bool sleeps_ = false;      // the daemon: for the shell's sleep
    bool stopped_ = false;     // it has done neither for long
    Fd output_, input_;        // the pipe's two ends
};

} // namespace sim
