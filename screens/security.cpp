/* The security menu and its help page. */
#include "core/handlers.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/wireless.h"

/* Screen records, shared but for the idle timers. */
static LcdTimer options_idle_timer, help_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;

static constexpr int WPS_ITEM = 1;
static constexpr int WPS_NEEDS_RADIO_ITEM = 3; // no label of its own: stands in for the WPS item while the radio is off

static const char *const security_items[] = {
    "guest access menu", "WPS setup", "security help", "WPS wireless disabled", nullptr,
};

static void draw_security_options(int action)
{
    const char *const labels[] = {
        ml_str(TEXT_GUEST_ITEM),
        ml_str(TEXT_WPS_TITLE),
        ml_str(TEXT_SECURITY_HELP_TITLE),
        nullptr,
    };
    draw_list(ml_str(TEXT_SECURITY_TITLE), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &state, action);
}

static void draw_security_help(int action)
{
    draw_page(ml_str(TEXT_SECURITY_HELP_TITLE), nullptr, ml_str(TEXT_SECURITY_HELP), &state, action);
}

static int select_item(const ScreenEntry *previous)
{
    const int item = list_position(security_items, previous);
    return item == WPS_NEEDS_RADIO_ITEM ? WPS_ITEM : item;
}

static const char *choose_item()
{
    const int item = getSelectedItemId(&state);
    return list_item(security_items, item == WPS_ITEM && !is_wireless_radio_on() ? WPS_NEEDS_RADIO_ITEM : item);
}

static const Conduct security_options = {
    .idle_timer = &options_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_security_options,
    .list_state = &state,
    .select = select_item,
    .left = "menu",
    .choose_ok = choose_item,
};

static const Conduct security_help = {
    .idle_timer = &help_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_security_help,
    .left = "security options",
};

int security_options_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(security_options, previous, action);
}

int security_help_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(security_help, previous, action);
}
