#include "sim/local_socket.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace sim {

/* The address of `name` below the open folder `folder`: a socket address has room for a short path only. */
static sockaddr_un address_of(const Fd &folder, const std::string &name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(folder.get()) + "/" + name;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

template <typename Call> static Fd open_socket(const std::filesystem::path &root, const std::string &name, Call call)
{
    const Fd folder(open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    Fd socket_fd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const sockaddr_un address = address_of(folder, name);
    const auto *generic = reinterpret_cast<const sockaddr *>(&address);
    return folder && socket_fd && call(socket_fd.get(), generic, sizeof address) == 0 ? std::move(socket_fd) : Fd();
}

Fd bind_socket(const std::filesystem::path &root, const std::string &name)
{
    std::filesystem::remove(root / name);
    Fd socket_fd = open_socket(root, name, bind);
    if (!socket_fd)
        fail(root / name);
    return socket_fd;
}

Fd connect_socket(const std::filesystem::path &root, const std::string &name)
{
    return open_socket(root, name, connect);
}

std::optional<std::string> receive(const Fd &socket_fd, size_t limit)
{
    /* Its whole size at first: most are far below the limit. */
    const ssize_t size = recv(socket_fd.get(), nullptr, 0, MSG_DONTWAIT | MSG_PEEK | MSG_TRUNC);
    if (size < 0)
        return std::nullopt;
    std::string datagram(std::min(limit, static_cast<size_t>(size)), '\0');
    recv(socket_fd.get(), datagram.data(), datagram.size(), MSG_DONTWAIT);
    return datagram;
}

} // namespace sim
