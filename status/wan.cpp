#include "status/wan.h"

#include "core/command.h"
#include "core/file.h"
#include "gfx/format.h"
#include "gfx/utf8.h"
#include "platform/router.h"

#include <arpa/inet.h>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <unistd.h>

static constexpr const char *UPTIME_FILE = "/tmp/wan_uptime"; // exists while the WAN connection is up
static constexpr const char *REGISTER_COMMAND = "/sbin/5416regc 0x4048 2> /dev/null";
static constexpr const char *NO_ADDRESS = "---";
static constexpr const char *PPP_PLACEHOLDER = "10.64.64.64"; // of an interface that has no connection
static constexpr const char *UNCONFIGURED = "1.1.1.100";

int get_sockfd()
{
    const int fd = router_interface_socket();
    if (fd < 0)
        perror("user: socket creating failed");
    return fd;
}

static bool read_address(int fd, unsigned long request, ifreq *query, std::span<char> text)
{
    if (router_interface_query(fd, request, query) < 0)
        return false;
    sockaddr_in address;
    memcpy(&address, &query->ifr_addr, sizeof address);
    format_text(text, "%s", inet_ntoa(address.sin_addr));
    return true;
}

static bool read_hardware_address(int fd, ifreq *query, std::span<char> text)
{
    if (router_interface_query(fd, SIOCGIFHWADDR, query) < 0)
        return false;
    unsigned char byte[6];
    memcpy(byte, query->ifr_hwaddr.sa_data, sizeof byte);
    format_text(text, "%02hhx:%02hhx:%02hhx:%02hhx:%02hhx:%02hhx", byte[0], byte[1], byte[2], byte[3], byte[4],
                byte[5]);
    return true;
}

int getIFInfo(IfInfo *info)
{
    const int fd = get_sockfd();
    if (fd < 0)
        return -1;
    ifreq query = {};
    memcpy(query.ifr_name, info->ifname, sizeof info->ifname);
    query.ifr_addr.sa_family = AF_INET;
    int result = 0;
    if (!read_address(fd, SIOCGIFADDR, &query, info->ipaddr))
        result = -1;
    else if (strcmp(info->ipaddr, PPP_PLACEHOLDER) == 0)
        result = -2;
    if (!read_hardware_address(fd, &query, info->hwaddr))
        result = -1;
    if (!read_address(fd, SIOCGIFNETMASK, &query, info->netmask))
        result = -1;
    if (router_interface_query(fd, SIOCGIFMTU, &query) == 0)
        info->mtu = query.ifr_mtu;
    else
        result = -1;
    close(fd);
    return result;
}

/* The value of a hexadecimal digit, -1 for any other character. */
static int hex_digit(char c)
{
    const unsigned char byte = static_cast<unsigned char>(c);
    if (isdigit(byte))
        return c - '0';
    return isxdigit(byte) ? tolower(byte) - 'a' + 10 : -1;
}

/* Bits 16 to 23 of the register, from "...:4048 ... 0x12345678"; -1 when it is not there. */
static int find_register_byte(const char *output)
{
    const char *name = output ? strstr(output, ":4048") : nullptr;
    const char *x = name ? strchr(name, 'x') : nullptr;
    if (!x || strlen(x) < 5)
        return -1;
    const int high = hex_digit(x[3]), low = hex_digit(x[4]);
    if (high < 0)
        return 0;
    return low < 0 ? high : high * 16 + low;
}

int get_wan_port_status(uint8_t *state)
{
    const CommandOutput output(REGISTER_COMMAND);
    const int byte = find_register_byte(output.text());
    if (byte < 0)
        *state = 0;
    else if (!(byte & 0x40))
        *state = 1;
    else if (!(byte & 0x10))
        *state = 2;
    else if (!(byte & 0x08))
        *state = 3;
    else
        *state = 0;
    return byte >= 0;
}

/* The address of the WAN interface as an owner sees it; null when it has none worth showing. */
static const char *interface_address(const char *name, IfInfo *info)
{
    *info = {};
    format_text(info->ifname, "%s", name);
    return getIFInfo(info) == 0 && strcmp(info->ipaddr, UNCONFIGURED) != 0 ? info->ipaddr : nullptr;
}

static bool is_connected()
{
    uint8_t port = 0;
    if (router_exists(UPTIME_FILE))
        get_wan_port_status(&port);
    return port != 0;
}

char *get_wan_address_text(std::span<char> text)
{
    const Setting interface("wan_ifname"), mode("wan_mode"), address("wan_ipaddr"), login("bpa_login");
    IfInfo info;
    const char *shown = nullptr;
    if (is_connected()) {
        if (strcmp(mode.text(), "static") == 0)
            shown = *address.text() ? address.text() : nullptr;
        else if (strcmp(mode.text(), "bpa") != 0 || login.text()[0] != '0')
            shown = interface_address(interface.text(), &info);
    }
    copy_cut(text.first(sizeof info.ipaddr), shown ? shown : NO_ADDRESS);
    return text.data();
}
