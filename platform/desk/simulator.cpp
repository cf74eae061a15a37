#include "platform/desk/simulator.h"

#include "platform/desk/root.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

static constexpr const char *CONTROL_SOCKET = "/run/control";
static constexpr std::string_view INSTALLED = "/sbin/";
static constexpr size_t LARGEST_FILE = 65536; // what is larger is not told

/* The way to the simulator, once something was told. */
static int control = -1;
static char content[LARGEST_FILE];

bool is_watched()
{
    const char *watched = getenv("PANEL_WATCHED");
    return watched && std::string_view(watched) == "yes";
}

bool is_installed(const char *path)
{
    return std::string_view(path).starts_with(INSTALLED);
}

static bool connect_control()
{
    if (control >= 0)
        return true;
    const int fd = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d%s", desk_root(), CONTROL_SOCKET);
    if (fd >= 0 && connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        control = fd;
    else
        close(fd);
    return control >= 0;
}

/* Waits while the simulator is behind: nothing that was told is lost. */
void tell_message(const void *message, size_t size)
{
    if (connect_control())
        send(control, message, size, MSG_NOSIGNAL);
}

void tell(std::string_view kind, std::string_view name, std::string_view text)
{
    if (!is_watched() || !connect_control())
        return;
    const std::string_view words[] = {kind, " ", name, " ", text};
    iovec parts[std::size(words)];
    for (size_t i = 0; i < std::size(words); i++)
        parts[i] = {const_cast<char *>(words[i].data()), words[i].size()};
    msghdr message = {};
    message.msg_iov = parts;
    message.msg_iovlen = text.data() ? 5 : name.data() ? 3 : 1;
    sendmsg(control, &message, MSG_NOSIGNAL);
}

int tell_file(const char *path, int fd)
{
    /* Installed files are read all the time, and what they hold is known. */
    if (is_installed(path) || !is_watched())
        return fd;
    const int error = errno;
    const ssize_t size = fd < 0 ? -1 : pread(fd, content, sizeof content, 0);
    if (fd < 0)
        tell("missing", path);
    else if (size >= 0 && static_cast<size_t>(size) < sizeof content)
        tell("read", path, {content, static_cast<size_t>(size)});
    errno = error;
    return fd;
}
