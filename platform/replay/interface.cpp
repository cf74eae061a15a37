#include "platform/replay/replay.h"
#include "platform/router.h"

#include <arpa/inet.h>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>

static bool put_address(sockaddr &address, const std::string &text)
{
    sockaddr_in internet = {};
    internet.sin_family = AF_INET;
    if (inet_pton(AF_INET, text.c_str(), &internet.sin_addr) != 1)
        return false;
    memcpy(&address, &internet, sizeof address);
    return true;
}

/* Six two-digit hexadecimal numbers joined by ":". */
static bool put_hardware_address(sockaddr &address, const std::string &text)
{
    constexpr size_t bytes = 6, width = 3;
    if (text.size() != bytes * width - 1)
        return false;
    address = {};
    address.sa_family = ARPHRD_ETHER;
    for (size_t i = 0; i < bytes; i++) {
        const char *digits = text.c_str() + i * width;
        uint8_t byte = 0;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2 || (i + 1 < bytes && digits[2] != ':'))
            return false;
        memcpy(address.sa_data + i, &byte, 1);
    }
    return true;
}

static bool answer(unsigned long request, const ReplayInterface &known, ifreq &interface)
{
    switch (request) {
    case SIOCGIFADDR:
        return put_address(interface.ifr_addr, known.address);
    case SIOCGIFNETMASK:
        return put_address(interface.ifr_netmask, known.netmask);
    case SIOCGIFHWADDR:
        return put_hardware_address(interface.ifr_hwaddr, known.hardware_address);
    case SIOCGIFMTU:
        interface.ifr_mtu = known.mtu;
        return true;
    default:
        return false;
    }
}

int router_interface_socket()
{
    return eventfd(0, EFD_CLOEXEC);
}

int router_interface_query(int, unsigned long request, ifreq *interface)
{
    const auto known = replay.interfaces.find({interface->ifr_name, strnlen(interface->ifr_name, IFNAMSIZ - 1)});
    if (known == replay.interfaces.end()) {
        errno = ENODEV;
        return -1;
    }
    if (!answer(request, known->second, *interface)) {
        errno = EINVAL;
        return -1;
    }
    return 0;
}
