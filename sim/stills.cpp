/* For how long a recording shows each of its pictures. */
#include "sim/picture_files.h"
#include "sim/router_time.h"

#include <algorithm>

namespace sim {

static constexpr unsigned LONGEST_STILL = 200; // hundredths of a second
static constexpr unsigned SHORTEST_STILL = 2;  // viewers take less for none given
static constexpr unsigned HUNDREDTHS_A_TICK = 100 / TICKS_PER_SECOND;

std::vector<Still> stills_between(const std::vector<Picture> &pictures, uint64_t from, uint64_t to)
{
    std::vector<Still> stills;
    for (size_t i = 0; i < pictures.size(); ++i) {
        const uint64_t begin = std::max(from, pictures[i].tick);
        const uint64_t end = i + 1 < pictures.size() ? std::max(begin, pictures[i + 1].tick) : std::max(begin, to);
        const uint64_t hundredths = std::min<uint64_t>((end - begin) * HUNDREDTHS_A_TICK, LONGEST_STILL);
        stills.push_back({pictures[i], std::max(static_cast<unsigned>(hundredths), SHORTEST_STILL)});
    }
    return stills;
}

} // namespace sim
