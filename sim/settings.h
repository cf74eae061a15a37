/* The router's settings store, seen from outside the daemon: the files that its desk platform keeps. */
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace sim {

using Settings = std::map<std::string, std::string>;

/* What a start of the router does to the store at `root`: settings that flash does not hold get their `defaults` there,
 * and flash becomes the running store. Throws std::system_error, as all that follow but read_settings. */
void restore_settings(const std::filesystem::path &root, const Settings &defaults);

/* The running settings. */
Settings read_settings(const std::filesystem::path &root);

/* Whether `key` can be one: printable characters of ASCII, "=" not among them. */
bool is_setting_key(std::string_view key);

/* Changes one running setting; `value` holds no NUL. */
void write_setting(const std::filesystem::path &root, const std::string &key, const std::string &value);

/* Removes one running setting. */
void remove_setting(const std::filesystem::path &root, const std::string &key);

/* Makes the running settings those that flash holds. */
void commit_settings(const std::filesystem::path &root);

} // namespace sim
