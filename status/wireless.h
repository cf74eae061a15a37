/* The wireless networks' radio. */
#pragma once

/* Whether the radio is on: unless nvram wifi_dot11_mode begins with "0". */
bool is_wireless_radio_on();

/* Switches the radio over in the settings store and on the air. */
void toggle_wireless_radio();

/* Makes changed settings of the wireless networks hold; does not wait for it. */
void restart_wireless();

/* The channel that automatic selection has chosen, from the wireless tool's report; 6 when it cannot be learned. Waits
 * for the tool. */
int wl_auto_channel();
