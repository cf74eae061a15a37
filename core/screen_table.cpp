#include "core/screen_table.h"

#include "core/actions.h"
#include "core/handlers.h"

#include <cstdio>
#include <cstring>

static const ScreenEntry screen_table[SCREEN_COUNT + 1] = {
    {welcome_handle, "welcome"},
    {select_language_handle, "select_language"},
    {init_setup_handle, "init setup"},
    {menu_setup_handle, "menu setup"},
    {menu_handle, "menu"},
    {network_status_handle, "network status"},
    {total_spdm_handle, "total speedometer"},
    {upld_dl_spdm_handle, "upload-download speedometer"},
    {display_time_handle, "current time"},
    {security_options_handle, "security options"},
    {LCD_power_save_handle, "LCD power save"},
    {LCD_power_save_confirm_handle, "power save confirm"},
    {LCD_power_save_help_handle, "power save help"},
    {LCD_power_saving_handle, "LCD power saving"},
    {help_and_tips_handle, "help and tips"},
    {help_internet_handle, "Internet not found"},
    {help_wireless_handle, "Wireless not found"},
    {help_wireless_can_not_connect_handle, "can not connect"},
    {help_more_handle, "Need more help"},
    {security_help_handle, "security help"},
    {WPS_setup_handle, "WPS setup"},
    {WPS_wireless_disabled_handle, "WPS wireless disabled"},
    {WPS_help_handle, "wps help"},
    {WPS_start_handle, "WPS start"},
    {WPS_complete_handle, "completeWPS"},
    {WPS_fail_handle, "failWPS"},
    {WPS_on_off_handle, "wps on-off"},
    {guest_access_handle, "guest access"},
    {guest_access_confirm_handle, "ga confirm"},
    {guest_access_login_handle, "ga login info"},
    {guest_access_help_handle, "ga help"},
    {guest_access_menu_handle, "guest access menu"},
    {computer_speed_handle, "computer speed"},
    {computer_usage_handle, "computer usage"},
    {router_event_handle, "router event"},
    {router_information_handle, "router information"},
    {wireless_radio_handle, "wireless radio"},
    {wireless_radio_feature_handle, "wireless radio feature"},
    {wireless_switch_handle, "wireless switch"},
    {wireless_info_handle, "show wireless info"},
    {nullptr, nullptr},
};

const ScreenEntry *current_screen = screen_table;
void (*screen_observer)(const char *name);
int gui_loaded;

static int lcd_event_id = EVENT_NONE;

int switch_screen(const char *name)
{
    if (!name)
        return 0;
    const ScreenEntry *entry = screen_table;
    while (entry->name && strcmp(entry->name, name) != 0)
        entry++;
    if (!entry->name) {
        printf("lcd switch screen failed, current %s, switch to %s\n", current_screen->name, name);
        return 0;
    }
    const ScreenEntry *previous = current_screen;
    current_screen = entry;
    if (screen_observer)
        screen_observer(name);
    return entry->handler(previous, ACTION_ENTER);
}

void set_lcd_event_id(int id)
{
    lcd_event_id = id;
}

int get_lcd_event_id()
{
    return lcd_event_id;
}
