/* The report of the wireless tool, of which the channel is read. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "status/wireless.h"

void fuzz(Input &in)
{
    FuzzRouter router;
    router.settings["wifi_dot11_mode"] = in.text();
    router.output = in.rest();
    const int channel = wl_auto_channel();
    require(channel >= 0 && channel <= 9999999, "a channel is a number of at most seven digits");
    require(channel == 6 || is_wireless_radio_on(), "without a radio the channel is the usual one");
}
