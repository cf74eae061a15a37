#include "sim/settings.h"

#include "platform/desk/settings_file.h"
#include "sim/fd.h"
#include "sim/files.h"
#include "sim/text.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sstream>
#include <sys/file.h>

namespace sim {

static constexpr const char *RUNNING_FILE = "nvram/running";
static constexpr const char *COMMITTED_FILE = "nvram/committed";

static std::string running_file(const std::filesystem::path &root)
{
    return root / RUNNING_FILE;
}

void restore_settings(const std::filesystem::path &root, const Settings &defaults)
{
    const std::string committed_file = root / COMMITTED_FILE;
    const SettingsFile committed = {AT_FDCWD, committed_file.c_str()};
    for (const auto &[key, value] : defaults) {
        const std::unique_ptr<char, decltype(&std::free)> kept(settings_get(committed, key.c_str()), std::free);
        if (!kept && settings_set(committed, key.c_str(), value.c_str()) < 0)
            fail(committed_file);
    }
    if (settings_copy(committed, {AT_FDCWD, running_file(root).c_str()}) < 0)
        fail(running_file(root));
}

Settings read_settings(const std::filesystem::path &root)
{
    Settings settings;
    std::istringstream lines(read_file(running_file(root)).value_or(""));
    for (std::string line; std::getline(lines, line);) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos || equals == 0)
            continue;
        if (const auto value = unescaped(line.substr(equals + 1)))
            settings.emplace(line.substr(0, equals), *value);
    }
    return settings;
}

bool is_setting_key(std::string_view key)
{
    return !key.empty() && std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c <= '~' && c != '='; });
}

void write_setting(const std::filesystem::path &root, const std::string &key, const std::string &value)
{
    if (settings_set({AT_FDCWD, running_file(root).c_str()}, key.c_str(), value.c_str()) < 0)
        fail(running_file(root));
}

/* By the rules of the store's file: under its lock, a whole new file in its place. */
void remove_setting(const std::filesystem::path &root, const std::string &key)
{
    const std::string lock_file = running_file(root) + ".lock";
    const Fd lock(open(lock_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!lock || flock(lock.get(), LOCK_EX) < 0)
        fail(lock_file);
    std::string kept;
    std::istringstream lines(read_file(running_file(root)).value_or(""));
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with(key + "="))
            kept += line + "\n";
    write_file(running_file(root), kept);
}

void commit_settings(const std::filesystem::path &root)
{
    const std::string committed_file = root / COMMITTED_FILE;
    if (settings_copy({AT_FDCWD, running_file(root).c_str()}, {AT_FDCWD, committed_file.c_str()}) < 0)
        fail(committed_file);
}

} // namespace sim
