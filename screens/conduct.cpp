#include "screens/conduct.h"

#include "core/actions.h"
#include "gfx/widget.h"
#include "status/power_save_mode.h"

#include <cstring>

int list_position(const char *const *items, const ScreenEntry *previous)
{
    if (!items || !previous)
        return -1;
    for (int i = 0; items[i]; i++)
        if (strcmp(items[i], previous->name) == 0)
            return i;
    return -1;
}

const char *list_item(const char *const *items, int index)
{
    for (int i = 0; items && items[i]; i++)
        if (i == index)
            return items[i];
    return nullptr;
}

bool leave_when_idle(const LcdTimer *idle_timer, IdleRule rule)
{
    if (!timer_expired(idle_timer))
        return false;
    if (get_lcd_power_save_mode() == 0)
        switch_screen("LCD power saving");
    else if (rule == IDLE_STANDARD)
        switch_screen("network status");
    else
        return false;
    return true;
}

/* Opens a list on the item that the user comes back from. */
static void restore_selection(const Conduct &conduct, const ScreenEntry *previous)
{
    const int item = conduct.select ? conduct.select(previous) : list_position(conduct.items, previous);
    if (item < 0 || !conduct.list_state)
        return;
    *conduct.list_state = {};
    setSelectedItemId(conduct.list_state, item);
}

static void enter(const Conduct &conduct, const ScreenEntry *previous)
{
    init_timer(conduct.refresh_timer, conduct.refresh_ticks);
    restore_selection(conduct, previous);
    if (conduct.on_enter)
        conduct.on_enter();
    conduct.draw(ACTION_ENTER);
}

static void refresh(const Conduct &conduct, int action)
{
    if (!conduct.refresh_timer || !timer_expired(conduct.refresh_timer))
        return;
    init_timer(conduct.refresh_timer, conduct.refresh_ticks);
    if (conduct.on_refresh)
        conduct.on_refresh();
    conduct.draw(action);
}

static void move(const Conduct &conduct, int action)
{
    switch (conduct.up_down) {
    case UP_DOWN_NOTHING:
        return;
    case UP_DOWN_REFRESH:
        return refresh(conduct, action);
    case UP_DOWN_REARM_AND_DRAW:
        init_timer(conduct.refresh_timer, conduct.refresh_ticks);
        [[fallthrough]];
    case UP_DOWN_DRAW:
        return conduct.draw(action);
    }
}

static const char *ok_target(const Conduct &conduct)
{
    if (conduct.choose_ok)
        return conduct.choose_ok();
    if (conduct.ok)
        return conduct.ok;
    return list_item(conduct.items, getSelectedItemId(conduct.list_state));
}

int run_conduct(const Conduct &conduct, const ScreenEntry *previous, int action)
{
    if (action != ACTION_TICK)
        init_timer(conduct.idle_timer, IDLE_TICKS);
    else if (conduct.idle_timer && leave_when_idle(conduct.idle_timer, conduct.idle))
        return 0;
    switch (action) {
    case ACTION_ENTER:
        enter(conduct, previous);
        break;
    case ACTION_TICK:
        refresh(conduct, ACTION_TICK);
        break;
    case ACTION_UP:
    case ACTION_DOWN:
        move(conduct, action);
        break;
    case ACTION_LEFT:
        switch_screen(conduct.left);
        break;
    case ACTION_RIGHT:
        switch_screen(conduct.right);
        break;
    case ACTION_OK:
        if (conduct.on_ok)
            conduct.on_ok();
        switch_screen(ok_target(conduct));
        break;
    case ACTION_MENU:
        switch_screen(conduct.menu_key ? "menu" : nullptr);
        break;
    case ACTION_EVENT:
        switch_screen("router event");
        break;
    default: // ACTION_NONE and above
        break;
    }
    return 0;
}
