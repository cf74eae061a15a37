#include "sim/inputs.h"

#include "core/display.h"
#include "sim/places.h"
#include "sim/router_files.h"
#include "sim/settings.h"

namespace sim {

using enum Kind;

static constexpr const char *ON_OFF = "off on";
static constexpr const char *DIGIT_SWITCH = "off=0 on=1";
static constexpr const char *LINK = "off on blink";
static constexpr const char *LANGUAGES = "en es fr de it du tc jp kr";
static constexpr const char *MODES = "dhcp static pppoe pptp l2tp bpa multi_pppoe";
static constexpr const char *SECURITY = "disabled wep psk psk2 psk2_mixed";
static constexpr const char *CHANNELS = "auto 1 2 3 4 5 6 7 8 9 10 11 12 13";
static constexpr const char *OUTCOMES = "success stop overlap error none";
static constexpr const char *PICTURES =
    "none ICONS_ROUTER_NOWL_NOW ICONS_ROUTER_NOWL_WITHW ICONS_ROUTER_WITHWL_NOW ICONS_ROUTER_WITHWL_WITHW "
    "ICON_INTERNET ICON_MODEM ICON_SECURITY ICON_TARVEX ICON_WIRELESSPC";
static constexpr const char *LONGEST = "1000"; // bytes of a text; a request's body holds it escaped

static constexpr const char *ZONES =
    "GMT-12:0:1 GMT-11:0:1 GMT-10:0:1 GMT-9:0:1 GMT-8:0:1 GMT-7:0:1 GMT-7:0:2 GMT-7:0:3 GMT-6:0:1 GMT-6:0:2 GMT-6:0:3 "
    "GMT-5:0:1 GMT-5:0:2 GMT-4:0:1 GMT-4:0:2 GMT-3:2:1 GMT-3:0:1 GMT-3:0:2 GMT-3:0:3 GMT-2:0:1 GMT-1:0:1 GMT-1:0:2 "
    "GMT+0:0:1 GMT+0:0:2 GMT+1:0:1 GMT+1:0:2 GMT+1:0:3 GMT+1:0:4 GMT+1:0:5 GMT+2:0:1 GMT+2:0:2 GMT+2:0:3 GMT+2:0:4 "
    "GMT+2:0:5 GMT+2:0:6 GMT+3:0:1 GMT+3:0:2 GMT+3:0:3 GMT+3:2:1 GMT+4:0:1 GMT+4:0:2 GMT+4:2:1 GMT+5:0:1 GMT+5:0:2 "
    "GMT+5:2:1 GMT+6:0:1 GMT+6:0:2 GMT+6:2:1 GMT+7:0:1 GMT+7:0:2 GMT+8:0:1 GMT+8:0:2 GMT+9:0:1 GMT+9:0:3 GMT+9:2:1 "
    "GMT+9:2:2 GMT+10:0:1 GMT+10:0:2 GMT+10:0:4 GMT+10:0:5 GMT+11:0:1 GMT+12:0:1 GMT+12:0:2 GMT+13:0:1";

static constexpr Input inputs[] = {
    {"clock.speed", "Clock", "Speed", CHOICE, "pause=0 1 10 100", &speed_place, "", "1"},
    {"clock.step", "Clock", "One tick", ACTION, "", &ticks_place, "1"},
    {"clock.jump", "Clock", "Two minutes on", ACTION, "", &ticks_place, "1200"},
    {"clock.time", "Clock", "Time (UTC)", TIME, "", &wall_clock_place, ""},
    {"clock.zone", "Clock", "Zone", CHOICE, ZONES, &setting_place, "time_zone", "GMT+0:0:1"},
    {"clock.daylight", "Clock", "Daylight saving", CHOICE, DIGIT_SWITCH, &setting_place, "time_daylight", "off"},

    {"link.internet", "Links", "Internet", CHOICE, LINK, &status_place, "internet", "on"},
    {"link.wan", "Links", "WAN", CHOICE, LINK, &status_place, "wan", "on"},
    {"link.lan", "Links", "LAN", CHOICE, LINK, &status_place, "lan", "on"},
    {"link.wireless", "Links", "Wireless", CHOICE, LINK, &status_place, "wireless", "on"},
    {"link.security", "Links", "Security", CHOICE, LINK, &status_place, "security", "on"},
    {"link.power", "Links", "Power", CHOICE, LINK, &status_place, "power", "on"},
    {"link.clients", "Links", "Wireless clients", NUMBER, "0..999", &status_place, "wireless_client", "3"},

    {"event.lost-link", "Events", "Lost link", ACTION, "", &event_place, "lost link"},
    {"event.lost-internet", "Events", "Lost Internet", ACTION, "", &event_place, "lost internet"},
    {"event.restore-internet", "Events", "Restore Internet", ACTION, "", &event_place, "restore internet"},
    {"event.save-config-start", "Events", "Save config start", ACTION, "", &event_place, "save config start"},
    {"event.save-config-end", "Events", "Save config end", ACTION, "", &event_place, "save config end"},
    {"event.setup-wizard-start", "Events", "Setup wizard start", ACTION, "", &event_place, "setup wizard start"},
    {"event.setup-wizard-end", "Events", "Setup wizard end", ACTION, "", &event_place, "setup wizard end"},
    {"event.info", "Events", "Info", ACTION, "", &event_place, "info"},
    {"event.firmware-upgrade", "Events", "Firmware upgrade", ACTION, "", &upgrade_place, ""},
    {"info.text", "Events", "Text of “Info”", TEXT, "199", &line_place, "tmp/lcd/lcd_info"},

    {"panel.language", "Panel", "Language", CHOICE, LANGUAGES, &language_place, "language_lcd", "en"},
    {"panel.web-language", "Panel", "Language of the web pages", CHOICE, LANGUAGES, &setting_place, "language", "en"},
    {"panel.power-saving", "Panel", "Power saving", CHOICE, ON_OFF, &setting_place, "lcd_power_save_mode", "off"},
    {"panel.factory", "Panel", "Factory settings", CHOICE, ON_OFF, &marker_place, "var/is_default_for_lcd", "off"},

    {"wan.mode", "WAN", "Mode", CHOICE, MODES, &setting_place, "wan_mode", "dhcp"},
    {"wan.port", "WAN", "Cable", CHOICE, "off=0x00ff0000 on=0x00bf0000", &line_place, REGISTER_FILE, "on"},
    {"wan.up", "WAN", "Connection up", CHOICE, ON_OFF, &marker_place, "tmp/wan_uptime", "on"},
    {"wan.address", "WAN", "Address", ADDRESS, "", &interface_place, "wan0", "203.0.113.25"},
    {"wan.static-address", "WAN", "Static address", TEXT, LONGEST, &setting_place, "wan_ipaddr", "203.0.113.80"},
    {"wan.interface", "WAN", "Interface", TEXT, LONGEST, &setting_place, "wan_ifname", "wan0"},
    {"wan.bpa-login", "WAN", "BPA login", CHOICE, DIGIT_SWITCH, &setting_place, "bpa_login", "on"},
    {"wan.over-wireless", "WAN", "Over wireless", CHOICE, DIGIT_SWITCH, &setting_place, "wifi_if_on", "off"},
    {"lan.address", "WAN", "LAN address", TEXT, LONGEST, &setting_place, "lan_ipaddr", "192.168.1.1"},

    {"wifi.radio", "Wireless", "Radio", CHOICE, "off=0 on=7", &setting_place, "wifi_dot11_mode", "on"},
    {"wifi.name", "Wireless", "Name", TEXT, LONGEST, &setting_place, "wifi_ssid", "Home network"},
    {"wifi.security", "Wireless", "Security", CHOICE, SECURITY, &setting_place, "wifi_security", "psk2"},
    {"wifi.key-number", "Wireless", "WEP key in use", CHOICE, "1 2 3 4", &setting_place, "wifi_def_key", "1"},
    {"wifi.key", "Wireless", "WEP key 1", TEXT, LONGEST, &setting_place, "wifi_key1", "0123456789abcdef0123456789"},
    {"wifi.channel", "Wireless", "Channel", CHOICE, CHANNELS, &setting_place, "wifi_channel", "auto"},
    {"wifi.channel-in-use", "Wireless", "Automatic choice", NUMBER, "1..196", &line_place, CHANNEL_FILE, "6"},
    {"wifi.width", "Wireless", "Channel width", CHOICE, "20=1 20/40=0 40=3", &setting_place, "wifi_bandwidth", "20/40"},

    {"wps.enabled", "WPS", "WPS", CHOICE, DIGIT_SWITCH, &setting_place, "wifi_wsc_enable", "on"},
    {"wps.outcome", "WPS", "Pairing ends with", CHOICE, OUTCOMES, &parameter_place, "", "success"},
    {"wps.seconds", "WPS", "Seconds until then", NUMBER, "0..140", &parameter_place, "", "5"},

    {"guest.access", "Guest network", "Guest access", CHOICE, DIGIT_SWITCH, &setting_place, "wifi_gacable", "off"},
    {"guest.name", "Guest network", "Name", TEXT, LONGEST, &setting_place, "wifi_gssid", "Home guests"},
    {"guest.password", "Guest network", "Password", TEXT, LONGEST, &setting_place, "wifi_psk_guest_pwd", ""},

    {"traffic.pattern", "Traffic", "Pattern", CHOICE, "idle steady bursts glitch", &parameter_place, "", "steady"},
    {"traffic.down", "Traffic", "Line down, bytes/s", NUMBER, "0..1000000000", &parameter_place, "", "3000000"},
    {"traffic.up", "Traffic", "Line up, bytes/s", NUMBER, "0..1000000000", &parameter_place, "", "400000"},
    {"traffic.seed", "Traffic", "Seed", NUMBER, "0..65535", &parameter_place, "", "1"},

    {"computers.count", "Computers", "Computers", NUMBER, "0..253", &parameter_place, "", "5"},
    {"computers.nameless", "Computers", "Without a name", NUMBER, "0..253", &parameter_place, "", "1"},
    {"computers.come-and-go", "Computers", "Come and go", CHOICE, ON_OFF, &parameter_place, "", "off"},

    {"router.reboot", "Router", "Reboot", ACTION, "", &reboot_place, ""},
    {"router.kill-daemon", "Router", "Kill frontpaneld", ACTION, "", &kill_place, "frontpaneld"},
    {"router.kill-network-status", "Router", "Kill network_status", ACTION, "", &kill_place, "network_status"},
    {"router.kill-pc-monitor", "Router", "Kill pc_monitor", ACTION, "", &kill_place, "pc_monitor"},

    {"fault.bitmap", "Faults", "Missing picture", CHOICE, PICTURES, &picture_fault_place, "", "none"},
    {"fault.pack", "Faults", "Language pack in use", CHOICE, "whole cut", &pack_fault_place, "", "whole"},
    {"fault.lock", "Faults", "Display lock", CHOICE, "no left-behind", &lock_fault_place, &LCD_LOCK_FILE[1], "no"},
    {"fault.driver", "Faults", "Display driver", CHOICE, "there=off gone=on", &marker_place, NO_DRIVER_FILE, "there"},

    {"key.up", "Keys", "Up", ACTION, "", &key_place, "up"},
    {"key.down", "Keys", "Down", ACTION, "", &key_place, "down"},
    {"key.left", "Keys", "Left", ACTION, "", &key_place, "left"},
    {"key.right", "Keys", "Right", ACTION, "", &key_place, "right"},
    {"key.ok", "Keys", "OK", ACTION, "", &key_place, "ok"},
    {"key.menu", "Keys", "MENU", ACTION, "", &key_place, "menu"},
};

std::span<const Input> router_inputs()
{
    return inputs;
}

std::optional<Input> find_input(std::string_view id)
{
    static constexpr std::string_view SETTING = "setting.";
    for (const Input &input : inputs)
        if (input.id == id)
            return input;
    if (!id.starts_with(SETTING) || !is_setting_key(id.substr(SETTING.size())))
        return std::nullopt;
    const std::string_view key = id.substr(SETTING.size());
    return Input{id, SETTINGS_GROUP, key, TEXT, LONGEST, &setting_place, key};
}

} // namespace sim
