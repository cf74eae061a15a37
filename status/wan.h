/* The WAN connection: port link, interface addresses, and the address text that an owner sees. */
#pragma once

#include <cstdint>
#include <span>

/* What is known of a network interface; all texts NUL-terminated. */
struct IfInfo {
    char ifname[16];  // set by the caller, everything else zero
    char ipaddr[16];  // dotted
    char hwaddr[18];  // "00:1f:33:8a:5f:2a"
    char netmask[16]; // dotted
    int32_t mtu;
};

/* A socket for interface queries; -1 after saying why. */
int get_sockfd();

/* Fills `info` for the interface it names. 0; -2 when its address is the placeholder of a PPP interface without a
 * connection; -1 when something could not be read. */
int getIFInfo(IfInfo *info);

/* The link of the WAN port, from the switch's register: 0 none, else link. 1 when the register could be read, else 0.
 */
int get_wan_port_status(uint8_t *state);

/* The WAN address for the owner, "---" while there is no connection, written to `text` (at least 16 bytes; a longer
 * static address is cut). Returns its start. */
char *get_wan_address_text(std::span<char> text);
