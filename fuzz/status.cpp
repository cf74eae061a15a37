/* The status files of the companion daemon, one after the other, twice over. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "status/network_status.h"

#include <climits>

static constexpr const char *NAMES[] = {"internet", "wan", "power", "wireless", "lan", "wireless_client", "security"};

void fuzz(Input &in)
{
    FuzzRouter router;
    reset_network_status();
    router.settings["wifi_if_on"] = in.text();
    for (int pass = 0; pass < 2; pass++) {
        const int missing = in.number(0, 127);
        router.files.clear();
        for (int i = 0; i < STATUS_ENTRY_COUNT; i++)
            if (!(missing >> i & 1))
                router.files["/tmp/lcd/network_status/" + std::string(NAMES[i])] = in.text();
        int clients = -1;
        read_network_status(&clients);
        require(clients >= 0, "there are no fewer than no clients");
        update_status_phases();
        for (const NetworkStatusEntry &entry : network_status_table) {
            require(entry.state >= STATUS_OFF && entry.state <= STATUS_BLINK, "a state is one of three");
            require(entry.shown == !!entry.shown && entry.previous == !!entry.previous, "a phase is one of two");
        }
        const Connection connection = check_connection();
        require(!router.files.empty() || connection.link == connection.internet,
                "without files both are there or none");
    }
}
