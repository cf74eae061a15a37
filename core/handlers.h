/* The handlers of all screens, in the order of the screen table. */
#pragma once

struct ScreenEntry;

int welcome_handle(const ScreenEntry *previous, int action);
int select_language_handle(const ScreenEntry *previous, int action);
int init_setup_handle(const ScreenEntry *previous, int action);
int menu_setup_handle(const ScreenEntry *previous, int action);
int menu_handle(const ScreenEntry *previous, int action);
int network_status_handle(const ScreenEntry *previous, int action);
int total_spdm_handle(const ScreenEntry *previous, int action);
int upld_dl_spdm_handle(const ScreenEntry *previous, int action);
int display_time_handle(const ScreenEntry *previous, int action);
int security_options_handle(const ScreenEntry *previous, int action);
int LCD_power_save_handle(const ScreenEntry *previous, int action);
int LCD_power_save_confirm_handle(const ScreenEntry *previous, int action);
int LCD_power_save_help_handle(const ScreenEntry *previous, int action);
int LCD_power_saving_handle(const ScreenEntry *previous, int action);
int help_and_tips_handle(const ScreenEntry *previous, int action);
int help_internet_handle(const ScreenEntry *previous, int action);
int help_wireless_handle(const ScreenEntry *previous, int action);
int help_wireless_can_not_connect_handle(const ScreenEntry *previous, int action);
int help_more_handle(const ScreenEntry *previous, int action);
int security_help_handle(const ScreenEntry *previous, int action);
int WPS_setup_handle(const ScreenEntry *previous, int action);
int WPS_wireless_disabled_handle(const ScreenEntry *previous, int action);
int WPS_help_handle(const ScreenEntry *previous, int action);
int WPS_start_handle(const ScreenEntry *previous, int action);
int WPS_complete_handle(const ScreenEntry *previous, int action);
int WPS_fail_handle(const ScreenEntry *previous, int action);
int WPS_on_off_handle(const ScreenEntry *previous, int action);
int guest_access_handle(const ScreenEntry *previous, int action);
int guest_access_confirm_handle(const ScreenEntry *previous, int action);
int guest_access_login_handle(const ScreenEntry *previous, int action);
int guest_access_help_handle(const ScreenEntry *previous, int action);
int guest_access_menu_handle(const ScreenEntry *previous, int action);
int computer_speed_handle(const ScreenEntry *previous, int action);
int computer_usage_handle(const ScreenEntry *previous, int action);
int router_event_handle(const ScreenEntry *previous, int action);
int router_information_handle(const ScreenEntry *previous, int action);
int wireless_radio_handle(const ScreenEntry *previous, int action);
int wireless_radio_feature_handle(const ScreenEntry *previous, int action);
int wireless_switch_handle(const ScreenEntry *previous, int action);
int wireless_info_handle(const ScreenEntry *previous, int action);
