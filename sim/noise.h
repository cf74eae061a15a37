/* Chance that always comes out the same way: a number for each seed, stream and time. */
#pragma once

#include <cmath>
#include <cstdint>

namespace sim {

/* A number in 0..1 for each triple: the output function of SplitMix64 (Steele, Lea, Flood: "Fast splittable
 * pseudorandom number generators", 2014). */
inline double chance(uint32_t seed, uint32_t stream, uint64_t index)
{
    uint64_t z = ((uint64_t{seed} << 32 | stream) + 1) * 0x9e3779b97f4a7c15 + index * 0xd1342543de82ef95;
    z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
    z = (z ^ z >> 27) * 0x94d049bb133111eb;
    return static_cast<double>((z ^ z >> 31) >> 11) * 0x1p-53;
}

/* Rises and falls smoothly between 0 and 1, from one chance to the next in a time of 1. */
inline double noise(uint32_t seed, uint32_t stream, double time)
{
    const double index = std::floor(time), part = time - index;
    const auto at = static_cast<uint64_t>(index);
    const double from = chance(seed, stream, at), to = chance(seed, stream, at + 1);
    return from + (to - from) * part * part * (3 - 2 * part);
}

} // namespace sim
