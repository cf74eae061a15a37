/* The whole daemon: any screen, with any files, settings and outputs, under any keys and events. */
#include "core/actions.h"
#include "core/input.h"
#include "core/main_loop.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "lang/language.h"

#include <span>

static constexpr const char *FILES[] = {
    "/tmp/lcd/lcd_info",
    "/tmp/lcd/network_status/internet",
    "/tmp/lcd/network_status/speed/down",
    "/tmp/lcd/network_status/speed/pcs",
    "/tmp/lcd/network_status/speed/total_pc_data",
    "/tmp/lcd/network_status/speed/up",
    "/tmp/lcd/network_status/wan",
    "/tmp/lcd/network_status/wireless_client",
    "/tmp/wan_uptime",
    "/var/is_default_for_lcd",
    "/var/udhcpd.leases",
    "/var/wps_error",
    "/var/wps_overlap",
    "/var/wps_stop",
    "/var/wps_success",
};
static constexpr const char *SETTINGS[] = {
    "bpa_login",          "lan_ipaddr", "language_lcd",    "lcd_power_save_mode", "time_daylight",   "time_zone",
    "wan_ifname",         "wan_ipaddr", "wan_mode",        "wifi_bandwidth",      "wifi_channel",    "wifi_def_key",
    "wifi_gacable",       "wifi_gssid", "wifi_if_on",      "wifi_key1",           "wifi_dot11_mode", "wifi_security",
    "wifi_psk_guest_pwd", "wifi_ssid",  "wifi_wsc_enable",
};
static constexpr const char *SCREENS[] = {
    "welcome",
    "select_language",
    "init setup",
    "menu setup",
    "menu",
    "network status",
    "total speedometer",
    "upload-download speedometer",
    "current time",
    "security options",
    "LCD power save",
    "power save confirm",
    "power save help",
    "LCD power saving",
    "help and tips",
    "Internet not found",
    "Wireless not found",
    "can not connect",
    "Need more help",
    "security help",
    "WPS setup",
    "WPS wireless disabled",
    "wps help",
    "WPS start",
    "completeWPS",
    "failWPS",
    "wps on-off",
    "guest access",
    "ga confirm",
    "ga login info",
    "ga help",
    "guest access menu",
    "computer speed",
    "computer usage",
    "router event",
    "router information",
    "wireless radio",
    "wireless radio feature",
    "wireless switch",
    "show wireless info",
    "no such screen",
};

static const char *choose(Input &in, std::span<const char *const> names)
{
    return names[static_cast<size_t>(in.number(0, static_cast<int>(names.size()) - 1))];
}

static void pass(int count)
{
    for (int i = 0; i < count; i++) {
        lcd_tick_handler(0);
        panel_pass();
    }
}

/* One thing that happens to the router. */
static void step(Input &in, FuzzRouter &router)
{
    switch (in.number(0, 7)) {
    case 0:
        router.files[choose(in, FILES)] = in.text();
        break;
    case 1:
        router.settings[choose(in, SETTINGS)] = in.text();
        break;
    case 2:
        router.output = in.text();
        break;
    case 3:
        switch_screen(choose(in, SCREENS));
        break;
    case 4:
        set_lcd_event_id(in.number(0, EVENT_NONE));
        [[fallthrough]];
    case 5:
        current_screen->handler(nullptr, in.number(ACTION_ENTER, ACTION_NONE));
        break;
    case 6:
        language_pending = in.number(0, 1);
        router.clock += in.number(0, 3) * 86400 * 5;
        break;
    default:
        pass(in.number(1, 20));
    }
}

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    switch_screen("menu");
    for (int steps = 0; steps < 40 && !in.empty(); steps++)
        step(in, router);
    pass(1);
}
