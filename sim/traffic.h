/* Believable traffic: what pc_monitor measures on the simulated router. The same plan, from the same second on, always
 * gives the same figures. */
#pragma once

#include "sim/computers.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace sim {

struct TrafficPlan {
    std::string pattern; // "idle", "steady", "bursts" or "glitch"
    uint32_t seed;
    uint32_t down, up; // what the line carries at most, bytes a second
    unsigned computers;
    bool come_and_go;
};

/* How much of the line is used in `second`, 0..1; each direction is a `stream`. */
double line_load(std::string_view pattern, uint32_t seed, uint32_t stream, uint64_t second);

class Traffic {
public:
    /* Lets `second` of router time pass; what pc_monitor then measures, a text for each of its files. */
    std::map<std::string, std::string> pass(const TrafficPlan &plan, uint64_t second);

    /* How many wireless computers were there in the last second. */
    unsigned wireless_computers() const { return wireless_computers_; }

private:
    std::array<uint64_t, MOST_COMPUTERS> totals_ = {}; // bytes that each has moved
    unsigned wireless_computers_ = 0;
};

} // namespace sim
