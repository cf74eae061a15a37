#include "core/main_loop.h"

#include "core/actions.h"
#include "core/daemons.h"
#include "core/input.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "lang/language.h"

#include <csignal>
#include <cstring>
#include <poll.h>

static constexpr uint32_t WATCHDOG_TICKS = 600;
static constexpr timespec LONGEST_SLEEP = {0, 100000000};

/* The minute between two checks of the companion daemons. */
static LcdTimer watchdog_timer;

void panel_start()
{
    signal(SIGUSR1, lcd_input_handler);
    signal(SIGUSR2, lcd_language_handler);
    init_timer_fun();
    current_screen->handler(nullptr, ACTION_ENTER);
    init_timer(&watchdog_timer, WATCHDOG_TICKS);
}

static void follow_language()
{
    language_pending = 0;
    const int id = get_stored_language();
    if (id == get_current_language())
        return;
    load_language(id);
    switch_screen(current_screen->name);
}

/* The events that end something concern only the screens that show it; to the others they are a tick. */
static bool is_event_for_current_screen()
{
    switch (get_lcd_event_id()) {
    case EVENT_LOST_LINK:
    case EVENT_LOST_INTERNET:
    case EVENT_SAVE_CONFIG_START:
    case EVENT_SETUP_WIZARD_START:
    case EVENT_INFO:
        return true;
    default:
        return strcmp(current_screen->name, "router event") == 0 || strcmp(current_screen->name, "welcome") == 0;
    }
}

/* Hands an announced key or event to the current screen. False when nothing known was announced. */
static bool deliver_input()
{
    input_pending = 0;
    if (!read_lcd_input())
        return false;
    if (lcd_action == ACTION_EVENT && !is_event_for_current_screen())
        lcd_action = ACTION_TICK;
    current_screen->handler(nullptr, lcd_action);
    return true;
}

void panel_pass()
{
    if (language_pending)
        follow_language();
    if (input_pending && deliver_input())
        return;
    current_screen->handler(nullptr, ACTION_TICK);
    if (timer_expired(&watchdog_timer)) {
        check_daemons();
        init_timer(&watchdog_timer, WATCHDOG_TICKS);
    }
}

void panel_wait()
{
    /* The flags are tested with their signals held back, and only the sleep lets them in: none can slip in between.
     * Afterwards they are open again, for the children that a screen may start. */
    sigset_t input_signals, open_mask;
    sigemptyset(&input_signals);
    sigaddset(&input_signals, SIGUSR1);
    sigaddset(&input_signals, SIGUSR2);
    sigprocmask(SIG_BLOCK, &input_signals, &open_mask);
    if (!input_pending && !language_pending)
        ppoll(nullptr, 0, &LONGEST_SLEEP, &open_mask);
    sigprocmask(SIG_SETMASK, &open_mask, nullptr);
}
