#include "platform/router.h"

#include "platform/desk/command.h"
#include "platform/desk/root.h"
#include "platform/desk/simulator.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static constexpr const char *DISPLAY_SOCKET = "/run/lcd";
static constexpr const char *NO_DRIVER_FILE = "/run/no-driver"; // made by the simulator: the driver is gone
static constexpr const char *SPOILT_FOLDER = "/run/spoilt";     // likewise: what stands for installed files
static constexpr size_t LARGEST_OUTPUT = 65536;                 // of a captured command that is told
static constexpr size_t COMMAND_ROOM = 4 * PATH_MAX;            // a command names few paths

static int open_below(const char *folder, const char *path, int flags)
{
    char name[PATH_MAX];
    snprintf(name, sizeof name, ".%s%s", folder, path);
    return openat(desk_root(), name, flags | O_CLOEXEC | O_NONBLOCK, 0644);
}

int router_open(const char *path, int flags)
{
    /* What stands there for a file that was installed cannot be opened where that is to be missing. */
    if (is_installed(path) && is_watched()) {
        const int fd = open_below(SPOILT_FOLDER, path, flags);
        if (fd >= 0 || errno != ENOENT)
            return fd;
    }
    const int fd = open_below("", path, flags);
    return (flags & O_ACCMODE) == O_RDONLY ? tell_file(path, fd) : fd;
}

/* Whether `path` exists, which nobody is told. */
static bool exists(const char *path)
{
    return faccessat(desk_root(), desk_relative(path), F_OK, 0) == 0;
}

bool router_exists(const char *path)
{
    const bool found = exists(path);
    tell(found ? "exists" : "missing", path);
    return found;
}

int router_remove(const char *path)
{
    tell("removed", path);
    return unlinkat(desk_root(), desk_relative(path), 0);
}

int router_system(const char *command)
{
    char rooted[COMMAND_ROOM];
    if (!root_command(rooted, desk_root_path(), command))
        return -1;
    tell("runs", command);
    const int status = system(rooted);
    tell("ran");
    return status;
}

/* All that `stream` yields as a stream of its own, once it was told; `stream` is closed. */
static FILE *tell_output(FILE *stream)
{
    static char output[LARGEST_OUTPUT];
    const size_t size = fread(output, 1, sizeof output, stream);
    pclose(stream);
    tell("output", {output, size});
    FILE *copy = fmemopen(nullptr, size + 1, "w+");
    if (copy) {
        fwrite(output, 1, size, copy);
        rewind(copy);
    }
    return copy;
}

FILE *router_popen(const char *command)
{
    char rooted[COMMAND_ROOM];
    if (!root_command(rooted, desk_root_path(), command))
        return nullptr;
    tell("captures", command);
    FILE *stream = popen(rooted, "r");
    return stream && is_watched() ? tell_output(stream) : stream;
}

int router_pclose(FILE *stream)
{
    return is_watched() ? fclose(stream) : pclose(stream);
}

int router_display_socket()
{
    if (is_watched() && exists(NO_DRIVER_FILE)) {
        tell("gone", NO_DRIVER_FILE);
        errno = EPROTONOSUPPORT;
        return -1;
    }
    return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

int router_display_bind(int, uint32_t)
{
    /* The sender's port id stands in the message too; a local socket needs no name to send. */
    return 0;
}

ssize_t router_display_send(int fd, const void *message, size_t size)
{
    if (is_watched()) {
        tell_message(message, size);
        return static_cast<ssize_t>(size);
    }
    /* A socket's path has few bytes: the descriptor stands for the root, however long its own path is. */
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d%s", desk_root(), DISPLAY_SOCKET);
    sendto(fd, message, size, MSG_DONTWAIT, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    /* The driver takes every frame; one that nobody sees on the desk is no different to the daemon. */
    return static_cast<ssize_t>(size);
}
