/* What the router's programs tell the simulator: one line of words a message.
 *
 *   reboot                  the router is to start again
 *   rc WORDS...             a service command was given
 *   register 0x0fff8001     the switch register was written
 *
 * What the daemon tells stands in platform/desk/simulator.h. */
#pragma once

#include <filesystem>
#include <string>

namespace sim {

constexpr size_t CONTROL_MESSAGE_LIMIT = 1 << 17; // bytes

/* A message of words. Those that tell of a command or what it printed have it whole as their name. */
struct Telling {
    std::string kind, name, text;
};

Telling parse_telling(const std::string &message);

/* Sends one message to the simulator of the router at `root`. False when there is none. */
bool tell_simulator(const std::filesystem::path &root, const std::string &message);

/* Whether the router at `root` has a simulator. */
bool simulator_runs(const std::filesystem::path &root);

} // namespace sim
