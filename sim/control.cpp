#include "sim/control.h"

#include "sim/local_socket.h"
#include "sim/router_files.h"

#include <sys/socket.h>

namespace sim {

bool tell_simulator(const std::filesystem::path &root, const std::string &message)
{
    const Fd simulator = connect_socket(root, CONTROL_SOCKET);
    return simulator && send(simulator.get(), message.data(), message.size(), 0) >= 0;
}

bool simulator_runs(const std::filesystem::path &root)
{
    return static_cast<bool>(connect_socket(root, CONTROL_SOCKET));
}

} // namespace sim
