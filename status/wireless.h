/* The wireless radio. */
#pragma once

/* Whether the radio is on: unless nvram wifi_dot11_mode begins with "0". */
bool is_wireless_radio_on();

/* The channel that automatic selection has chosen, from the wireless tool's report; 6 when it cannot be learned. Waits
 * for the tool. */
int wl_auto_channel();
