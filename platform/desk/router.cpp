#include "platform/router.h"

#include "platform/desk/command.h"
#include "platform/desk/root.h"

#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static constexpr const char *DISPLAY_SOCKET = "/run/lcd";
static constexpr size_t COMMAND_ROOM = 4 * PATH_MAX; // a command names few paths

int router_open(const char *path, int flags)
{
    return openat(desk_root(), desk_relative(path), flags | O_CLOEXEC | O_NONBLOCK, 0644);
}

bool router_exists(const char *path)
{
    return faccessat(desk_root(), desk_relative(path), F_OK, 0) == 0;
}

int router_remove(const char *path)
{
    return unlinkat(desk_root(), desk_relative(path), 0);
}

int router_system(const char *command)
{
    char rooted[COMMAND_ROOM];
    return root_command(rooted, desk_root_path(), command) ? system(rooted) : -1;
}

FILE *router_popen(const char *command)
{
    char rooted[COMMAND_ROOM];
    return root_command(rooted, desk_root_path(), command) ? popen(rooted, "r") : nullptr;
}

int router_pclose(FILE *stream)
{
    return pclose(stream);
}

int router_display_socket()
{
    return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

int router_display_bind(int, uint32_t)
{
    /* The sender's port id stands in the message too; a local socket needs no name to send. */
    return 0;
}

ssize_t router_display_send(int fd, const void *message, size_t size)
{
    /* A socket's path has few bytes: the descriptor stands for the root, however long its own path is. */
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d%s", desk_root(), DISPLAY_SOCKET);
    sendto(fd, message, size, MSG_DONTWAIT, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    /* The driver takes every frame; one that nobody sees on the desk is no different to the daemon. */
    return static_cast<ssize_t>(size);
}
