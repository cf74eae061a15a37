/* The desk daemon on a router's root of its own, driven from outside: ticks, keys, pictures. */
#pragma once

#include "bench/router_folder.h"
#include "sim/fd.h"

#include <chrono>
#include <string>
#include <string_view>
#include <sys/types.h>

class DeskDaemon
{
public:
    /* Starts it; its ticks and its wall clock are this program's. */
    explicit DeskDaemon(const RouterFolder &router);
    ~DeskDaemon();
    DeskDaemon(const DeskDaemon &) = delete;
    DeskDaemon &operator=(const DeskDaemon &) = delete;

    pid_t pid() const { return pid_; }

    void tick() const;

    /* Announces a key; the time at which it did. */
    std::chrono::steady_clock::time_point press(std::string_view key) const;

    /* A picture that has come already; "" when none has. */
    std::string waiting_picture() const;

    /* The next picture. Throws std::runtime_error when none comes. */
    std::string next_picture() const;

    /* Ticks the splash away and opens the main menu. Its picture. Throws std::runtime_error when the splash does not
     * end. */
    std::string open_menu() const;

    /* How long the daemon and this thread together have waited for a processor that others had, in milliseconds. */
    double processor_wait() const;

private:
    const RouterFolder &router_;
    const sim::Fd display_;
    pid_t pid_;
};
