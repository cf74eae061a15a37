/* The file of the desk's network interfaces. */
#include "fuzz/fuzz.h"
#include "platform/router.h"

#include <cstdlib>
#include <cstring>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

static std::string interfaces_file()
{
    setenv("PANEL_ROOT", scratch_folder().c_str(), 1);
    mkdir((scratch_folder() + "/etc").c_str(), 0755);
    return scratch_folder() + "/etc/interfaces";
}

void fuzz(Input &in)
{
    static const std::string path = interfaces_file();
    ifreq query = {};
    in.text().copy(query.ifr_name, IFNAMSIZ);
    write_scratch(path, in.rest());
    for (const unsigned long request : {SIOCGIFADDR, SIOCGIFNETMASK, SIOCGIFHWADDR, SIOCGIFMTU, SIOCGIFINDEX}) {
        ifreq answer = query;
        const int result = router_interface_query(-1, request, &answer);
        require(result == 0 || result == -1, "a query is answered or not");
        require(result < 0 || request != SIOCGIFMTU || answer.ifr_mtu >= 0, "an MTU is not negative");
        require(result < 0 || request != SIOCGIFINDEX, "what is not known is not answered");
    }
}
