/* The processes that run on the simulated router. */
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace sim {

struct RouterProcess {
    pid_t pid;
    std::string program; // its name without folders
};

/* Every process that was started by a path below `root` (absolute). */
std::vector<RouterProcess> router_processes(const std::filesystem::path &root);

} // namespace sim
