/* The screens by name, the current one, and the way from one to another. */
#pragma once

struct ScreenEntry;

/* A screen's handler: gets the screen it is entered from (null unless it is being entered) and an Action. The result
 * is ignored. */
using ScreenHandler = int (*)(const ScreenEntry *previous, int action);

struct ScreenEntry {
    ScreenHandler handler;
    const char *name;
};

constexpr int SCREEN_COUNT = 40;

/* The row of the current screen; "welcome" at start. Only switch_screen writes it. */
extern const ScreenEntry *current_screen;

/* 1 once the setup wizard has been announced during the splash. Other programs of the firmware know it by this name. */
extern int gui_loaded;

/* Told the name of each screen that becomes current, before its handler runs; null (as on the router): nobody watches.
 */
extern void (*screen_observer)(const char *name);

/* Makes the screen called `name` current and calls its handler with ACTION_ENTER; its result. A null name is ignored,
 * an unknown one reported on standard output; both return 0 and change nothing. */
int switch_screen(const char *name);

/* Stores the id of the router event that the screens are to show; any value is taken. */
void set_lcd_event_id(int id);

/* The id last stored, EVENT_NONE at start. */
int get_lcd_event_id();
