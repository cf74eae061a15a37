#include "sim/router_time.h"

#include "sim/files.h"
#include "sim/router_files.h"

#include <sstream>

namespace sim {

void write_router_time(const std::filesystem::path &root, const RouterTime &now)
{
    write_file(root / CLOCK_FILE, std::to_string(now.ticks) + " " + std::to_string(now.seconds) + "\n");
}

std::optional<RouterTime> read_router_time(const std::filesystem::path &root)
{
    std::istringstream text(read_file(root / CLOCK_FILE).value_or(""));
    RouterTime now = {};
    return text >> now.ticks >> now.seconds ? std::optional(now) : std::nullopt;
}

} // namespace sim
