/* The main menu, "help and tips" and its four pages. */
#include "core/handlers.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"

/* Screen records. The help list and its pages share one: each lays it out afresh when it is entered. */
static LcdTimer menu_idle_timer, menu_refresh_timer;
static WidgetState menu_state;
static LcdTimer help_idle_timer, internet_idle_timer, wireless_idle_timer, connect_idle_timer, more_idle_timer;
static LcdTimer help_refresh_timer;
static WidgetState help_state;

static const char *const menu_items[] = {
    "security options", "wireless radio", "router information", "help and tips", "LCD power save", nullptr,
};

static const char *const help_items[] = {
    "Internet not found", "Wireless not found", "can not connect", "Need more help", nullptr,
};

static void draw_menu(int action)
{
    const char *const labels[] = {
        ml_str(TEXT_SECURITY_TITLE), ml_str(TEXT_WIRELESS_TITLE),  ml_str(TEXT_ROUTER_INFO_TITLE),
        ml_str(TEXT_HELP_TITLE),     ml_str(TEXT_POWER_SAVE_ITEM), nullptr,
    };
    char title[100];
    format_text(title, "%s\t\x12+%s", ml_str(TEXT_MENU_TITLE), ml_str(TEXT_OK_KEY));
    draw_list(title, ml_str(TEXT_MENU_BOTTOM_LINE), labels, &menu_state, action);
}

static void draw_help_and_tips(int action)
{
    const char *const labels[] = {
        ml_str(TEXT_HELP_INTERNET_TITLE),
        ml_str(TEXT_HELP_WIRELESS_TITLE),
        ml_str(TEXT_HELP_CONNECT_TITLE),
        ml_str(TEXT_HELP_MORE_TITLE),
        nullptr,
    };
    draw_list(ml_str(TEXT_HELP_TITLE), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &help_state, action);
}

static void draw_help_page(TextId title, TextId body, int action)
{
    draw_page(ml_str(title), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(body), &help_state, action);
}

static void draw_help_internet(int action)
{
    draw_help_page(TEXT_HELP_INTERNET_TITLE, TEXT_HELP_INTERNET, action);
}

static void draw_help_wireless(int action)
{
    draw_help_page(TEXT_HELP_WIRELESS_TITLE, TEXT_HELP_WIRELESS, action);
}

static void draw_help_can_not_connect(int action)
{
    draw_help_page(TEXT_HELP_CONNECT_TITLE, TEXT_HELP_CONNECT, action);
}

static void draw_help_more(int action)
{
    draw_help_page(TEXT_HELP_MORE_TITLE, TEXT_HELP_MORE, action);
}

static const Conduct menu = {
    .idle_timer = &menu_idle_timer,
    .refresh_timer = &menu_refresh_timer,
    .draw = draw_menu,
    .items = menu_items,
    .list_state = &menu_state,
    .left = "network status",
};

static const Conduct help_and_tips = {
    .idle_timer = &help_idle_timer,
    .refresh_timer = &help_refresh_timer,
    .draw = draw_help_and_tips,
    .items = help_items,
    .list_state = &help_state,
    .left = "menu",
};

static const Conduct help_internet = {
    .idle_timer = &internet_idle_timer,
    .refresh_timer = &help_refresh_timer,
    .draw = draw_help_internet,
    .left = "help and tips",
};

static const Conduct help_wireless = {
    .idle_timer = &wireless_idle_timer,
    .refresh_timer = &help_refresh_timer,
    .draw = draw_help_wireless,
    .left = "help and tips",
};

static const Conduct help_can_not_connect = {
    .idle_timer = &connect_idle_timer,
    .refresh_timer = &help_refresh_timer,
    .draw = draw_help_can_not_connect,
    .left = "help and tips",
};

static const Conduct help_more = {
    .idle_timer = &more_idle_timer,
    .refresh_timer = &help_refresh_timer,
    .draw = draw_help_more,
    .left = "help and tips",
};

int menu_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(menu, previous, action);
}

int help_and_tips_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(help_and_tips, previous, action);
}

int help_internet_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(help_internet, previous, action);
}

int help_wireless_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(help_wireless, previous, action);
}

int help_wireless_can_not_connect_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(help_can_not_connect, previous, action);
}

int help_more_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(help_more, previous, action);
}
