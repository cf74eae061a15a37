#include "platform/router.h"

#include <cstdlib>
#include <fcntl.h>
#include <linux/netlink.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

static constexpr int LCD_NETLINK_PROTOCOL = 18; // the display driver's own

int router_open(const char *path, int flags)
{
    return open(path, flags | O_CLOEXEC | O_NONBLOCK, 0644);
}

bool router_exists(const char *path)
{
    return access(path, F_OK) == 0;
}

int router_remove(const char *path)
{
    return unlink(path);
}

int router_system(const char *command)
{
    return system(command);
}

FILE *router_popen(const char *command)
{
    return popen(command, "r");
}

int router_pclose(FILE *stream)
{
    return pclose(stream);
}

time_t router_time()
{
    return time(nullptr);
}

tm *router_local_time(time_t t, tm *local)
{
    return localtime_r(&t, local);
}

int router_start_tick(const itimerval *interval)
{
    return setitimer(ITIMER_REAL, interval, nullptr);
}

int router_interface_socket()
{
    return socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

int router_interface_query(int fd, unsigned long request, ifreq *interface)
{
    /* An int to some C libraries, an unsigned long to others; every request about an interface fits both. */
    return ioctl(fd, static_cast<int>(request), interface);
}

int router_display_socket()
{
    return socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, LCD_NETLINK_PROTOCOL);
}

int router_display_bind(int fd, uint32_t port)
{
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_pid = port;
    return bind(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

ssize_t router_display_send(int fd, const void *message, size_t size)
{
    return send(fd, message, size, 0);
}
