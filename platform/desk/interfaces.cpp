/* The router's network interfaces, answered from a file of the root folder: a line NAME ADDRESS NETMASK HWADDR MTU each
 * ("ath0 10.0.0.2 255.255.255.0 00:1f:33:8a:5f:2a 1500"). */
#include "platform/router.h"

#include <arpa/inet.h>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

static constexpr const char *INTERFACES_FILE = "/etc/interfaces";
static constexpr size_t HARDWARE_ADDRESS_BYTES = 6;

/* The fields of a line as they stand; "" where the line is shorter. */
struct InterfaceLine {
    char name[64], address[64], netmask[64], hardware_address[64], mtu[64];
};

static bool find_interface(const char *name, InterfaceLine *line)
{
    const int fd = router_open(INTERFACES_FILE, O_RDONLY);
    FILE *file = fd < 0 ? nullptr : fdopen(fd, "r");
    if (!file) {
        close(fd);
        return false;
    }
    bool found = false;
    char text[256];
    while (!found && fgets(text, sizeof text, file)) {
        *line = {};
        sscanf(text, "%63s %63s %63s %63s %63s", line->name, line->address, line->netmask, line->hardware_address,
               line->mtu);
        found = strncmp(line->name, name, IFNAMSIZ) == 0;
    }
    fclose(file);
    return found;
}

static bool set_address(const char *text, sockaddr *address)
{
    sockaddr_in inet = {};
    inet.sin_family = AF_INET;
    if (inet_pton(AF_INET, text, &inet.sin_addr) != 1)
        return false;
    memcpy(address, &inet, sizeof inet);
    return true;
}

static bool set_hardware_address(const char *text, sockaddr *address)
{
    *address = {};
    address->sa_family = ARPHRD_ETHER;
    for (size_t i = 0; i < HARDWARE_ADDRESS_BYTES; i++) {
        unsigned byte = 0;
        const char *digits = text + 3 * i;
        const bool last = i == HARDWARE_ADDRESS_BYTES - 1;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2 || digits[2] != (last ? '\0' : ':'))
            return false;
        address->sa_data[i] = static_cast<char>(byte);
    }
    return true;
}

static bool set_mtu(const char *text, int *mtu)
{
    const char *const end = text + strlen(text);
    const auto [stop, error] = std::from_chars(text, end, *mtu);
    return error == std::errc() && stop == end && *mtu >= 0;
}

static bool answer(const InterfaceLine &line, unsigned long request, ifreq *interface)
{
    switch (request) {
    case SIOCGIFADDR:
        return set_address(line.address, &interface->ifr_addr);
    case SIOCGIFNETMASK:
        return set_address(line.netmask, &interface->ifr_netmask);
    case SIOCGIFHWADDR:
        return set_hardware_address(line.hardware_address, &interface->ifr_hwaddr);
    case SIOCGIFMTU:
        return set_mtu(line.mtu, &interface->ifr_mtu);
    default:
        return false;
    }
}

int router_interface_socket()
{
    return socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
}

int router_interface_query(int, unsigned long request, ifreq *interface)
{
    InterfaceLine line;
    if (!find_interface(interface->ifr_name, &line)) {
        errno = ENODEV;
        return -1;
    }
    if (answer(line, request, interface))
        return 0;
    errno = EADDRNOTAVAIL;
    return -1;
}
