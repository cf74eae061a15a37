/* What the router's programs tell the simulator: one line of words a message.
 *
 *   reboot                  the router is to start again
 *   rc WORDS...             a service command was given
 *   register 0x0fff8001     the switch register was written */
#pragma once

#include <filesystem>
#include <string>

namespace sim {

constexpr size_t CONTROL_MESSAGE_LIMIT = 1024; // bytes

/* Sends one message to the simulator of the router at `root`. False when there is none. */
bool tell_simulator(const std::filesystem::path &root, const std::string &message);

/* Whether the router at `root` has a simulator. */
bool simulator_runs(const std::filesystem::path &root);

} // namespace sim
