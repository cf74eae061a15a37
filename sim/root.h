/* The folder that is the simulated router's root. */
#pragma once

#include "sim/fd.h"

#include <filesystem>

namespace sim {

/* What the root's links lead to. */
struct RootSources {
    std::filesystem::path assets;   // folder with sbin/lcd_ml
    std::filesystem::path daemon;   // frontpaneld-desk
    std::filesystem::path programs; // panel-router-programs
};

constexpr const char *DAEMON_PROGRAM = "usr/sbin/frontpaneld"; // the daemon's place below the root

class Root {
public:
    /* Makes `dir` a router's root, or a temporary folder that goes with its owner when `dir` is empty. A root made
     * before keeps its settings; any other folder that holds something is refused, and so is one that a simulator
     * has already. Throws std::runtime_error. */
    Root(const std::filesystem::path &dir, const RootSources &sources);
    ~Root();
    Root(const Root &) = delete;
    Root &operator=(const Root &) = delete;

    /* Absolute, without links. */
    const std::filesystem::path &dir() const { return dir_; }

    /* The state after power-on: the folders that are memory on a router hold nothing but a driver's entry. */
    void power_on() const;

private:
    std::filesystem::path dir_;
    bool temporary_;
    Fd lock_;
};

} // namespace sim
