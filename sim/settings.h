/* The router's settings store, seen from outside the daemon: the files that its desk platform keeps. */
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace sim {

/* What a start of the router does to the store at `root`: settings that flash does not hold get their default there,
 * and flash becomes the running store. Throws std::system_error. */
void restore_settings(const std::filesystem::path &root);

/* The running settings. */
std::map<std::string, std::string> read_settings(const std::filesystem::path &root);

} // namespace sim
