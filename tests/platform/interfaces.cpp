#include "platform/router.h"
#include "tests/platform/desk_folder.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>

static constexpr const char *UNKNOWN = "ENODEV";
static constexpr const char *NONE = "EADDRNOTAVAIL";

/* What a query says, as text: the answer or the error. */
static std::string query(const char *name, unsigned long request)
{
    ifreq interface = {};
    strncpy(interface.ifr_name, name, IFNAMSIZ - 1);
    if (router_interface_query(-1, request, &interface) < 0)
        return errno == ENODEV ? UNKNOWN : errno == EADDRNOTAVAIL ? NONE : strerror(errno);
    if (request == SIOCGIFMTU)
        return std::to_string(interface.ifr_mtu);
    if (request == SIOCGIFHWADDR)
        return interface.ifr_hwaddr.sa_family == ARPHRD_ETHER ? interface.ifr_hwaddr.sa_data : "family";
    sockaddr_in inet;
    memcpy(&inet, &interface.ifr_addr, sizeof inet);
    return inet.sin_family == AF_INET ? inet_ntoa(inet.sin_addr) : "family";
}

TEST(DeskInterfaces, AnswersFromTheFile)
{
    const std::filesystem::path file = desk_folder() / "etc/interfaces";
    EXPECT_EQ(query("ath0", SIOCGIFMTU), UNKNOWN) << "no file";
    write_file(file, "# comment\n\n"
                     "ath0 10.0.0.2 255.255.255.0 41:1f:33:8A:5f:fe 1500\n"
                     "ath0 9.9.9.9 255.0.0.0 01:02:03:04:05:06 9\n"
                     "ppp0 - 255.255.255 1:2:3:4:5:6 -1\n"
                     "bad1 1.2.3.4x 0.0.0.0 00:1f:33:8a:5f:2a:00 15x\n"
                     "short\n" +
                         std::string(300, 'l') + "\nlast0 0.0.0.0 255.255.255.255 41:42:43:44:45:46 0");
    const struct {
        const char *name, *address, *netmask, *hardware_address, *mtu;
    } cases[] = {
        {"ath0", "10.0.0.2", "255.255.255.0", "A\x1f\x33\x8a\x5f\xfe", "1500"},
        {"ath", UNKNOWN, UNKNOWN, UNKNOWN, UNKNOWN},
        {"ppp0", NONE, NONE, NONE, NONE},
        {"bad1", NONE, "0.0.0.0", NONE, NONE},
        {"short", NONE, NONE, NONE, NONE},
        {"last0", "0.0.0.0", "255.255.255.255", "ABCDEF", "0"},
    };
    for (const auto &test : cases) {
        EXPECT_EQ(query(test.name, SIOCGIFADDR), test.address) << test.name;
        EXPECT_EQ(query(test.name, SIOCGIFNETMASK), test.netmask) << test.name;
        EXPECT_EQ(query(test.name, SIOCGIFHWADDR), test.hardware_address) << test.name;
        EXPECT_EQ(query(test.name, SIOCGIFMTU), test.mtu) << test.name;
    }
    EXPECT_EQ(query("ath0", SIOCGIFBRDADDR), NONE) << "the file does not tell";
}
