/* Datagram sockets below the router's root, however long its path is. */
#pragma once

#include "sim/fd.h"

#include <filesystem>
#include <optional>
#include <string>

namespace sim {

/* A socket that receives what is sent to `root`/`name`, in place of any left there; it never waits. Throws
 * std::system_error. */
Fd bind_socket(const std::filesystem::path &root, const std::string &name);

/* A socket that sends to `root`/`name`; none when nobody is bound there. */
Fd connect_socket(const std::filesystem::path &root, const std::string &name);

/* The next datagram of at most `limit` bytes that waits (what is longer is cut); nothing when none does. */
std::optional<std::string> receive(const Fd &socket_fd, size_t limit);

} // namespace sim
