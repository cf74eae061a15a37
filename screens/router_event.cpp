/* The screen "router event": a page for each kind of event, chosen when the screen is entered. */
#include "screens/router_event.h"

#include "core/actions.h"
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/network_status.h"

#include <array>
#include <cstring>

static constexpr const char *INFO_FILE = "/tmp/lcd/lcd_info"; // names the operation under way
static constexpr unsigned SAVE_CONFIG_TICKS = 100;

/* A page of this screen. It acts first and looks at its idle timer last. */
struct EventPage {
    LcdTimer *idle_timer;
    IdleRule idle;
    void (*draw)(int action);
    bool keys;                          // ok: "network status", menu: "menu"
    const char *(*on_event)(int event); // the event's target, or null: it goes on as a tick without a redraw; without
                                        // this function an event is as a key that does nothing
};

enum EventPageIndex { PAGE_LOST_INTERNET, PAGE_SAVE_CONFIG, PAGE_SETUP_WIZARD, PAGE_INFO, PAGE_LOST_LINK };

/* Screen records, shared by the pages but for the idle timers. */
static int event_screen = PAGE_LOST_INTERNET;
static const ScreenEntry *event_return_screen;
static LcdTimer event_refresh_timer;
static WidgetState event_info_state;
static LcdTimer lost_internet_idle_timer, lost_link_idle_timer, save_config_idle_timer, setup_wizard_idle_timer,
    info_idle_timer;
static LcdTimer save_config_timer;

/* What a page does with an action, but for the idle step. True when the action goes on as a tick. */
static bool act(const EventPage &page, int action)
{
    switch (action) {
    case ACTION_ENTER:
        init_timer(&event_refresh_timer, REFRESH_TICKS);
        [[fallthrough]];
    case ACTION_UP:
    case ACTION_DOWN:
        page.draw(action);
        return false;
    case ACTION_TICK:
        if (timer_expired(&event_refresh_timer)) {
            init_timer(&event_refresh_timer, REFRESH_TICKS);
            page.draw(ACTION_TICK);
        }
        return true;
    case ACTION_OK:
        switch_screen(page.keys ? "network status" : nullptr);
        return false;
    case ACTION_MENU:
        switch_screen(page.keys ? "menu" : nullptr);
        return false;
    case ACTION_EVENT:
        if (page.on_event) {
            const char *target = page.on_event(get_lcd_event_id());
            switch_screen(target);
            return !target;
        }
        return false;
    default:
        return false;
    }
}

static void idle_step(const EventPage &page, bool tick)
{
    if (tick)
        leave_when_idle(page.idle_timer, page.idle);
    else
        init_timer(page.idle_timer, IDLE_TICKS);
}

static int run_event_page(const EventPage &page, int action)
{
    const bool tick = act(page, action);
    idle_step(page, tick);
    return 0;
}

static void draw_event_page(TextId title, const char *bottom_line, TextId body, int action)
{
    draw_page(ml_str(title), bottom_line, ml_str(body), &event_info_state, action);
}

static void draw_event_lost_internet(int action)
{
    draw_event_page(TEXT_LOST_INTERNET_TITLE, ml_str(TEXT_EVENT_BOTTOM_LINE), TEXT_HELP_INTERNET, action);
}

static const char *on_event_lost_internet(int event)
{
    switch (event) {
    case EVENT_RESTORE_INTERNET:
        return "network status";
    case EVENT_LOST_LINK:
    case EVENT_SETUP_WIZARD_START:
    case EVENT_INFO:
        return "router event";
    default:
        return nullptr;
    }
}

static int event_lost_internet_handle(int action)
{
    static const EventPage page = {&lost_internet_idle_timer, IDLE_POWER_SAVE_ONLY, draw_event_lost_internet, true,
                                   on_event_lost_internet};
    return run_event_page(page, action);
}

static void draw_event_lost_link(int action)
{
    draw_event_page(TEXT_LOST_LINK_TITLE, ml_str(TEXT_EVENT_BOTTOM_LINE), TEXT_LOST_LINK, action);
}

static const char *on_event_lost_link(int event)
{
    switch (event) {
    case EVENT_RESTORE_INTERNET:
        return "network status";
    case EVENT_LOST_INTERNET:
    case EVENT_SETUP_WIZARD_START:
    case EVENT_INFO:
        return "router event";
    default:
        return nullptr;
    }
}

static int event_lost_link_handle(int action)
{
    static const EventPage page = {&lost_link_idle_timer, IDLE_POWER_SAVE_ONLY, draw_event_lost_link, true,
                                   on_event_lost_link};
    return run_event_page(page, action);
}

static void draw_event_save_config(int action)
{
    draw_event_page(TEXT_SAVE_CONFIG_TITLE, nullptr, TEXT_PLEASE_WAIT, action);
}

/* The screen on which the save began; the dark screen and this one are nothing to come back to. */
static const char *save_config_return()
{
    if (!event_return_screen || strcmp(event_return_screen->name, "router event") == 0 ||
        strcmp(event_return_screen->name, "LCD power saving") == 0)
        return "network status";
    return event_return_screen->name;
}

static const char *on_event_save_config(int event)
{
    switch (event) {
    case EVENT_SAVE_CONFIG_END:
        return save_config_return();
    case EVENT_SETUP_WIZARD_START:
    case EVENT_INFO:
        return "router event";
    default:
        return nullptr;
    }
}

/* The page closes by itself when no end of the save is announced. */
static int event_save_config_handle(int action)
{
    static const EventPage page = {&save_config_idle_timer, IDLE_STANDARD, draw_event_save_config, false,
                                   on_event_save_config};
    if (action == ACTION_MENU) {
        event_return_screen = nullptr;
        switch_screen("menu");
    }
    const bool tick = act(page, action);
    if (!tick)
        init_timer(&save_config_timer, SAVE_CONFIG_TICKS);
    else if (timer_expired(&save_config_timer))
        return switch_screen(save_config_return());
    idle_step(page, tick);
    return 0;
}

static void draw_event_setup_wizard(int action)
{
    draw_event_page(TEXT_SETUP_WIZARD_TITLE, nullptr, TEXT_SETUP_WIZARD, action);
}

/* Where the finished wizard leaves the router: connected, or with a loss to be shown. */
static const char *after_setup_wizard()
{
    const Connection connection = check_connection();
    if (connection.link && connection.internet)
        return "network status";
    set_lcd_event_id(connection.link ? EVENT_LOST_INTERNET : EVENT_LOST_LINK);
    return "router event";
}

static const char *on_event_setup_wizard(int event)
{
    switch (event) {
    case EVENT_SETUP_WIZARD_END:
        return after_setup_wizard();
    case EVENT_INFO:
        return "router event";
    default:
        return nullptr;
    }
}

static int event_setup_wizard_handle(int action)
{
    static const EventPage page = {&setup_wizard_idle_timer, IDLE_STANDARD, draw_event_setup_wizard, true,
                                   on_event_setup_wizard};
    return run_event_page(page, action);
}

struct InfoTitle {
    const char *operation;
    TextId title;
};

static const InfoTitle info_titles[] = {
    {"Reset Factory Default", TEXT_RESETTING},
    {"Restarting Router", TEXT_RESTARTING},
    {"Upgrading Firmware", TEXT_UPGRADING},
    {"Restore Settings", TEXT_RESTORING},
};

/* The title for the operation that the info file names; an unknown one is its own title, kept in `line`. */
static const char *info_title(std::span<char> line)
{
    read_first_line(INFO_FILE, line);
    if (line[0] == '\0')
        format_text(line, "%s", ml_str(TEXT_ROUTER_BUSY));
    size_t length = strlen(line.data());
    while (length > 0 && (line[length - 1] == '\r' || line[length - 1] == '\n'))
        line[--length] = '\0';
    for (const InfoTitle &row : info_titles)
        if (strcmp(line.data(), row.operation) == 0)
            return ml_str(row.title);
    return line.data();
}

static void draw_event_info(int action)
{
    std::array<char, 200> line;
    draw_page(info_title(line), nullptr, ml_str(TEXT_PLEASE_WAIT), &event_info_state, action);
}

/* The router is about to go down: no key and no later event leaves this page, only time. */
static int event_info_handle(int action)
{
    static const EventPage page = {&info_idle_timer, IDLE_STANDARD, draw_event_info, false, nullptr};
    return run_event_page(page, action);
}

int (*const eventHandlers[5])(int action) = {
    event_lost_internet_handle, event_save_config_handle, event_setup_wizard_handle,
    event_info_handle,          event_lost_link_handle,
};

/* The page for an event; -1 for one that has none. */
static int page_for(int event)
{
    switch (event) {
    case EVENT_LOST_LINK:
        return PAGE_LOST_LINK;
    case EVENT_LOST_INTERNET:
        return PAGE_LOST_INTERNET;
    case EVENT_SAVE_CONFIG_START:
        return PAGE_SAVE_CONFIG;
    case EVENT_SETUP_WIZARD_START:
        return PAGE_SETUP_WIZARD;
    case EVENT_INFO:
        return PAGE_INFO;
    default:
        return -1;
    }
}

/* Without a page there is nothing to show: back to where the user came from. */
static int leave_at_once(const ScreenEntry *previous)
{
    event_return_screen = nullptr;
    const bool back = previous && strcmp(previous->name, "router event") != 0;
    return switch_screen(back ? previous->name : "network status");
}

int router_event_handle(const ScreenEntry *previous, int action)
{
    if (action == ACTION_ENTER) {
        const int page = page_for(get_lcd_event_id());
        if (page < 0)
            return leave_at_once(previous);
        event_screen = page;
        if (page == PAGE_SAVE_CONFIG)
            event_return_screen = previous;
    }
    return eventHandlers[event_screen](action);
}
