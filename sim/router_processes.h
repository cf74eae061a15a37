/* What runs on the router: the display daemon, the companions that the router's init starts beside it, and all that
 * they start. */
#pragma once

#include "sim/fd.h"

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

    /* Gives the daemon a tick, once it has taken the last one: of two signals that wait, one would be lost. A daemon
     * that takes none for long, because it is stopped, loses them. */
    void send_tick();

    /* Buries children that have ended. How the daemon ended, as waitpid tells, when it is among them. */
    std::optional<int> reap();

    /* Ends the daemon and everything that was started below the root, and waits until nothing of it is left. */
    void end();

    /* Where what they print can be read. */
    const Fd &output() const { return output_; }

private:
    pid_t start_program(const char *program, pid_t group) const;
    bool kill_all() const;
    bool takes_tick() const;

    const std::filesystem::path root_;
    mutable std::mutex mutex_; // held while a process id may become another's
    pid_t daemon_ = 0;         // 0: it does not run
    pid_t group_ = 0;          // of the last daemon
    bool stopped_ = false;     // the daemon left its last tick waiting
    Fd output_, input_;        // the pipe's two ends
};

} // namespace sim
