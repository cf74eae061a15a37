/* The settings and the interface that the WAN address is made from. */
#include "status/wan.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"

#include <cstring>

void fuzz(Input &in)
{
    FuzzRouter router;
    for (unsigned char &byte : router.address)
        byte = static_cast<unsigned char>(in.number(0, 255));
    router.failing_queries = in.number(0, 255);
    if (in.number(0, 3) > 0)
        router.files["/tmp/wan_uptime"];
    for (const char *key : {"wan_mode", "wan_ipaddr", "wan_ifname", "bpa_login"})
        router.settings[key] = in.text();
    router.output = in.rest();
    std::array<char, 16> text;
    text.fill('x');
    require(get_wan_address_text(text) == text.data(), "the address stands at the start of its buffer");
    require(memchr(text.data(), '\0', text.size()) != nullptr && text[0] != '\0', "there is an address, and it ends");

    IfInfo info = {};
    strcpy(info.ifname, "wan0");
    const int result = getIFInfo(&info);
    require(result <= 0 && result >= -2, "the result is one of three");
    require(strlen(info.ipaddr) < 16 && strlen(info.netmask) < 16 && strlen(info.hwaddr) < 18, "the texts end");
}
