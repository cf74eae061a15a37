/* Power saving of the display: the setting's three screens, and the dark screen itself. */
#include "core/actions.h"
#include "core/display.h"
#include "core/handlers.h"
#include "gfx/frame_buffer.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/router.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/power_save_mode.h"

static constexpr const char *DARK_COMMAND = "/sbin/5416regc 0x4048=0xfff8000";
static constexpr const char *WAKE_COMMAND = "/sbin/5416regc 0x4048=0xfff8001";

/* Screen records, shared by the three settings screens but for the idle timers. */
static LcdTimer list_idle_timer, confirm_idle_timer, help_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;

static const char *const power_save_items[] = {"power save confirm", "power save help", nullptr};

static bool is_power_saving()
{
    return get_lcd_power_save_mode() == 0;
}

static void draw_power_save(int action)
{
    const bool on = is_power_saving();
    Title title;
    format_on_off_title(title, TEXT_POWER_SAVE_TITLE, on);
    const char *const labels[] = {
        ml_str(on ? TEXT_POWER_SAVE_TURN_OFF : TEXT_POWER_SAVE_TURN_ON),
        ml_str(TEXT_ABOUT_ITEM),
        nullptr,
    };
    draw_list(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &state, action);
}

static void draw_power_save_confirm(int action)
{
    const bool on = is_power_saving();
    Title title;
    format_on_off_title(title, TEXT_POWER_SAVE_TITLE, on);
    draw_page(title.data(), nullptr, ml_str(on ? TEXT_POWER_SAVE_CONFIRM_OFF : TEXT_POWER_SAVE_CONFIRM_ON), &state,
              action);
}

static void draw_power_save_help(int action)
{
    draw_page(ml_str(TEXT_ABOUT_ITEM), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(TEXT_POWER_SAVE_HELP), &state,
              action);
}

static const Conduct power_save = {
    .idle_timer = &list_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_power_save,
    .items = power_save_items,
    .list_state = &state,
    .left = "menu",
};

static const Conduct power_save_confirm = {
    .idle_timer = &confirm_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_power_save_confirm,
    .left = "LCD power save",
    .ok = "LCD power save",
    .on_ok = toggle_lcd_power_save_mode,
};

static const Conduct power_save_help = {
    .idle_timer = &help_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_power_save_help,
    .left = "LCD power save",
};

int LCD_power_save_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(power_save, previous, action);
}

int LCD_power_save_confirm_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(power_save_confirm, previous, action);
}

int LCD_power_save_help_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(power_save_help, previous, action);
}

static void go_dark()
{
    router_system(DARK_COMMAND);
    clearScreenBuffer();
    showScreen();
}

static void wake(const char *screen)
{
    router_system(WAKE_COMMAND);
    switch_screen(screen);
}

/* No timer runs here: the display stays dark until a key or an event. */
int LCD_power_saving_handle(const ScreenEntry *, int action)
{
    if (action == ACTION_ENTER)
        go_dark();
    else if (action >= ACTION_UP && action <= ACTION_MENU)
        wake("network status");
    else if (action == ACTION_EVENT)
        wake("router event");
    return 0;
}
