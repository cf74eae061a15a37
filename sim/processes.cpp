#include "sim/processes.h"

#include "sim/files.h"

#include <algorithm>

namespace sim {

static bool is_number(const std::string &text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::vector<RouterProcess> router_processes(const std::filesystem::path &root)
{
    const std::string below = root.string() + "/";
    std::vector<RouterProcess> found;
    for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
        const std::string pid = entry.path().filename();
        if (!is_number(pid))
            continue;
        const std::string arguments = read_file(entry.path() / "cmdline").value_or("");
        const std::string program = arguments.substr(0, arguments.find('\0'));
        if (program.starts_with(below))
            found.push_back({std::stoi(pid), program.substr(program.rfind('/') + 1)});
    }
    return found;
}

} // namespace sim
