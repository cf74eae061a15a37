/* The conduct that the screens share, written once: a screen is a constant of this record and a draw function. */
#pragma once

#include "core/screen_table.h"
#include "core/timer.h"

struct WidgetState;

constexpr unsigned IDLE_TICKS = 1200; // two minutes without a key
constexpr unsigned REFRESH_TICKS = 5;

/* Where two minutes without a key lead. */
enum IdleRule {
    IDLE_STANDARD,        // "LCD power saving" when power saving is on, else "network status"
    IDLE_POWER_SAVE_ONLY, // "LCD power saving" when power saving is on, else the screen stays and goes on redrawing
};

enum UpDown {
    UP_DOWN_DRAW,           // draw with the action
    UP_DOWN_NOTHING,        // nothing to move: the status pictures
    UP_DOWN_REARM_AND_DRAW, // the key also postpones the next redraw
    UP_DOWN_REFRESH,        // as a tick: drawn when the refresh timer has expired
};

struct Conduct {
    LcdTimer *idle_timer = nullptr;         // one per screen; armed to 1200 ticks by every action but a tick
    LcdTimer *refresh_timer = nullptr;      // shared by a family; null: no periodic redraw
    void (*draw)(int action) = nullptr;     // clears the buffer, draws with the action as step, shows the frame
    IdleRule idle = IDLE_STANDARD;          // where an expired idle timer leads
    UpDown up_down = UP_DOWN_DRAW;          // what the up and down keys do
    unsigned refresh_ticks = REFRESH_TICKS; // period of refresh_timer
    void (*on_enter)() = nullptr;           // set-up before the first draw
    void (*on_refresh)() = nullptr;         // before each redraw that the refresh timer caused
    const char *const *items = nullptr;     // screens of a list, null-terminated, in the order of its labels
    WidgetState *list_state = nullptr;      // the list's selection record, reset when an item is restored; null: a page
    int (*select)(const ScreenEntry *previous) = nullptr; // item to open on, -1: none; null: that of previous
    const char *left = nullptr;                           // target of the left key; null: nothing
    const char *right = nullptr;                          // target of the right key; null: nothing
    const char *ok = nullptr;             // target of ok; null: the selected item of items, on a page nothing
    const char *(*choose_ok)() = nullptr; // decides the target of ok now, in place of ok; may return null: nothing
    void (*on_ok)() = nullptr;            // what ok changes, before its target is entered
    bool menu_key = true;                 // "menu"; false: nothing. An event always leads to "router event".
};

/* The handler of a screen that keeps to the conduct. 0. */
int run_conduct(const Conduct &conduct, const ScreenEntry *previous, int action);

/* The place of `previous` in `items`; -1 when there is no previous screen or it is not in the list. */
int list_position(const char *const *items, const ScreenEntry *previous);

/* The screen that item number `index` of `items` leads to; null beyond the end of the list. */
const char *list_item(const char *const *items, int index);

/* The idle check alone: true when the timer has expired and another screen has been entered. */
bool leave_when_idle(const LcdTimer *idle_timer, IdleRule rule);
