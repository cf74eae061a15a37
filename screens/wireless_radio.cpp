/* The wireless radio: its menu, switching it on and off, its settings, what it is. */
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/wireless.h"

#include <cstring>

/* Screen records, shared but for the idle timers. */
static LcdTimer radio_idle_timer, switch_idle_timer, info_idle_timer, feature_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;
static InfoRow info_rows[4]; // channel, security, channel width, end

static const char *const radio_items[] = {"wireless switch", "show wireless info", "wireless radio feature", nullptr};

/* As format_on_off_title, with a blank before the word. */
static void format_title(Title &title, bool on)
{
    format_text(title, "%s\t %s", ml_str(TEXT_WIRELESS_TITLE), ml_str(on ? TEXT_ON : TEXT_OFF));
}

static void draw_wireless_radio(int action)
{
    const bool on = is_wireless_radio_on();
    Title title;
    format_title(title, on);
    const char *const labels[] = {
        ml_str(on ? TEXT_WIRELESS_TURN_OFF : TEXT_WIRELESS_TURN_ON),
        ml_str(TEXT_WIRELESS_INFO_ITEM),
        ml_str(TEXT_ABOUT_ITEM),
        nullptr,
    };
    draw_list(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &state, action);
}

static void draw_wireless_switch(int action)
{
    const bool on = is_wireless_radio_on();
    Title title;
    format_title(title, on);
    draw_page(title.data(), nullptr, ml_str(on ? TEXT_WIRELESS_CONFIRM_OFF : TEXT_WIRELESS_CONFIRM_ON), &state, action);
}

/* WEP keys of 13 characters, or 26 hexadecimal digits, are the long ones. */
static TextId wep_name()
{
    char key_name[64];
    format_text(key_name, "wifi_key%s", Setting("wifi_def_key").text());
    const size_t length = strlen(Setting(key_name).text());
    return length == 13 || length == 26 ? TEXT_SECURITY_WEP_128 : TEXT_SECURITY_WEP_64;
}

static TextId security_name(const char *mode)
{
    if (strcmp(mode, "wep") == 0)
        return wep_name();
    if (strcmp(mode, "psk") == 0)
        return TEXT_SECURITY_WPA;
    if (strcmp(mode, "psk2") == 0)
        return TEXT_SECURITY_WPA2;
    if (strcmp(mode, "psk2_mixed") == 0)
        return TEXT_SECURITY_WPA_WPA2;
    return TEXT_SECURITY_NONE;
}

static const char *channel_width(const char *bandwidth)
{
    switch (bandwidth[0]) {
    case '0':
        return "20 / 40";
    case '3':
        return "40";
    default:
        return "20";
    }
}

static void fill_info_rows(const char *channel, const char *security, const char *bandwidth)
{
    if (channel[0] == 'a')
        format_text(info_rows[0].label, "%s: %d", ml_str(TEXT_CHANNEL), wl_auto_channel());
    else
        format_text(info_rows[0].label, "%s: %s", ml_str(TEXT_CHANNEL), channel);
    format_text(info_rows[1].label, "%s: %s", ml_str(TEXT_SECURITY_MODE), ml_str(security_name(security)));
    format_text(info_rows[2].label, "%s: %s", ml_str(TEXT_CHANNEL_WIDTH), channel_width(bandwidth));
}

static void fill_bare_rows()
{
    static constexpr TextId LABELS[] = {TEXT_CHANNEL, TEXT_SECURITY_MODE, TEXT_CHANNEL_WIDTH};
    for (int i = 0; i < 3; i++)
        format_text(info_rows[i].label, "%s:", ml_str(LABELS[i]));
}

static void draw_wireless_info(int action)
{
    const bool on = is_wireless_radio_on();
    const Setting channel("wifi_channel"), security("wifi_security"), bandwidth("wifi_bandwidth");
    Title title;
    format_title(title, on);
    memset(info_rows, 0, sizeof info_rows);
    if (on)
        fill_info_rows(channel.text(), security.text(), bandwidth.text());
    else
        fill_bare_rows();
    draw_table(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), info_rows, &state, action);
}

static void draw_wireless_radio_feature(int action)
{
    draw_page(ml_str(TEXT_ABOUT_ITEM), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(TEXT_WIRELESS_HELP), &state,
              action);
}

static const Conduct wireless_radio = {
    .idle_timer = &radio_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wireless_radio,
    .items = radio_items,
    .list_state = &state,
    .left = "menu",
};

static const Conduct wireless_switch = {
    .idle_timer = &switch_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wireless_switch,
    .left = "wireless radio",
    .ok = "wireless radio",
    .on_ok = toggle_wireless_radio,
};

static const Conduct wireless_info = {
    .idle_timer = &info_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wireless_info,
    .left = "wireless radio",
};

static const Conduct wireless_radio_feature = {
    .idle_timer = &feature_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wireless_radio_feature,
    .left = "wireless radio",
};

int wireless_radio_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wireless_radio, previous, action);
}

int wireless_switch_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wireless_switch, previous, action);
}

int wireless_info_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wireless_info, previous, action);
}

int wireless_radio_feature_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wireless_radio_feature, previous, action);
}
