/* The computers of the simulated home: which there are, what they are called, who of them is there. */
#pragma once

#include <cstdint>
#include <string>

namespace sim {

constexpr unsigned MOST_COMPUTERS = 253;
constexpr unsigned FIRST_HOST = 2; // last byte of the first computer's address

/* The name of computer `index` (from 0), at most 40 bytes. */
std::string computer_name(unsigned index);

/* The DHCP server's lease file for `count` computers, the last `nameless` of which have no lease: 64 bytes each. */
std::string lease_file(unsigned count, unsigned nameless);

/* Whether computer `index` is connected by radio, as two of three are. */
bool is_wireless(unsigned index);

/* Whether computer `index`, one that comes and goes, is there in `second`. */
bool is_there(uint32_t seed, unsigned index, uint64_t second);

} // namespace sim
