/* The router's time as its programs see it, and what the daemon's platform takes for the wall clock. */
#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>

namespace sim {

constexpr unsigned TICKS_PER_SECOND = 10;

struct RouterTime {
    uint64_t ticks; // since the simulator started
    time_t seconds; // the wall clock
};

/* Makes `now` the time of the router at `root`. Throws std::system_error. */
void write_router_time(const std::filesystem::path &root, const RouterTime &now);

/* The time of the router at `root`; nothing when it has none. */
std::optional<RouterTime> read_router_time(const std::filesystem::path &root);

} // namespace sim
