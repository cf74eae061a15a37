/* The start-up path: the splash, the choice of a language at first use, and two pages of instructions. */
#include "core/actions.h"
#include "core/display.h"
#include "core/handlers.h"
#include "gfx/bitmap.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/text.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/router.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/network_status.h"

static constexpr const char *FACTORY_MARKER_FILE = "/var/is_default_for_lcd"; // exists at factory settings
static constexpr const char *PRODUCT_NAME = "T7 Orvane";

static constexpr int WELCOME_LAST_STEP = 12; // the bar is full
static constexpr unsigned STEP_TICKS = 60;
static constexpr unsigned LAST_STEP_TICKS = 20;

/* Screen records. */
static int welcome_step = 2;
static LcdTimer welcome_timer;
static LcdTimer language_idle_timer;
static WidgetState language_state;
static LcdTimer init_idle_timer, init_refresh_timer;
static WidgetState init_state;
static LcdTimer menu_setup_idle_timer, menu_setup_refresh_timer;
static WidgetState menu_setup_state;

static void draw_welcome(int step)
{
    clearScreenBuffer();
    drawFigure(DRAW_NORMAL, 10, 47, "icon_tarvex");
    drawString(LCD_WIDTH / 2, 27, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL, PRODUCT_NAME);
    drawRectangle(10, 12, 4, 108);
    /* The part of the bar that is still to come, inside its frame. */
    if (step < WELCOME_LAST_STEP)
        setReverseDisplay(11 + 9 * step, 11, 2, 9 * (WELCOME_LAST_STEP - step) - 2);
    showScreen();
}

static void show_event(EventId event)
{
    set_lcd_event_id(event);
    switch_screen("router event");
}

static void finish_welcome()
{
    load_language(get_stored_language());
    if (router_exists(FACTORY_MARKER_FILE)) {
        if (gui_loaded)
            show_event(EVENT_SETUP_WIZARD_START);
        else
            switch_screen("select_language");
        return;
    }
    const Connection connection = check_connection();
    if (!connection.link)
        show_event(EVENT_LOST_LINK);
    else if (!connection.internet)
        show_event(EVENT_LOST_INTERNET);
    else
        switch_screen("network status");
}

static void note_event(int event)
{
    if (event == EVENT_SETUP_WIZARD_START)
        gui_loaded = 1;
    else if (event == EVENT_SAVE_CONFIG_START || event == EVENT_SETUP_WIZARD_END)
        router_remove(FACTORY_MARKER_FILE);
}

/* Fills the bar by one step when it is time, and leaves once it has been full for a while. */
static void advance_welcome()
{
    if (!timer_expired(&welcome_timer))
        return;
    welcome_step++;
    if (welcome_step > WELCOME_LAST_STEP)
        return finish_welcome();
    draw_welcome(welcome_step);
    init_timer(&welcome_timer, welcome_step == WELCOME_LAST_STEP ? LAST_STEP_TICKS : STEP_TICKS);
}

int welcome_handle(const ScreenEntry *, int action)
{
    if (action == ACTION_ENTER) {
        draw_welcome(welcome_step);
        init_timer(&welcome_timer, STEP_TICKS);
    } else if (action == ACTION_EVENT) {
        note_event(get_lcd_event_id());
    }
    advance_welcome();
    return 0;
}

static void draw_select_language(int action)
{
    /* Indexed by language id. */
    const char *const labels[] = {
        ml_str(TEXT_LANGUAGE_EN), ml_str(TEXT_LANGUAGE_ES),
        ml_str(TEXT_LANGUAGE_FR), ml_str(TEXT_LANGUAGE_DE),
        ml_str(TEXT_LANGUAGE_IT), ml_str(TEXT_LANGUAGE_DU),
        ml_str(TEXT_LANGUAGE_TC), ml_str(TEXT_LANGUAGE_JP),
        ml_str(TEXT_LANGUAGE_KR), nullptr,
    };
    draw_list(ml_str(TEXT_SELECT_LANGUAGE_TITLE), nullptr, labels, &language_state, action);
}

static int select_current_language(const ScreenEntry *)
{
    return get_current_language();
}

static void apply_selected_language()
{
    const int id = getSelectedItemId(&language_state);
    if (id == get_current_language())
        return;
    load_language(id);
    store_language(id);
}

static const Conduct select_language = {
    .idle_timer = &language_idle_timer,
    .draw = draw_select_language,
    .idle = IDLE_POWER_SAVE_ONLY,
    .list_state = &language_state,
    .select = select_current_language,
    .ok = "init setup",
    .on_ok = apply_selected_language,
    .menu_key = false,
};

static void draw_init_setup(int action)
{
    draw_page(ml_str(TEXT_SETUP_WIZARD_TITLE), nullptr, ml_str(TEXT_INIT_SETUP), &init_state, action);
}

static const Conduct init_setup = {
    .idle_timer = &init_idle_timer,
    .refresh_timer = &init_refresh_timer,
    .draw = draw_init_setup,
    .idle = IDLE_POWER_SAVE_ONLY,
    .left = "menu setup",
    .ok = "network status",
};

static void draw_menu_setup(int action)
{
    draw_page(ml_str(TEXT_MENU_SETUP_TITLE), nullptr, ml_str(TEXT_MENU_SETUP), &menu_setup_state, action);
}

static const Conduct menu_setup = {
    .idle_timer = &menu_setup_idle_timer,
    .refresh_timer = &menu_setup_refresh_timer,
    .draw = draw_menu_setup,
    .idle = IDLE_POWER_SAVE_ONLY,
    .ok = "network status",
};

int select_language_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(select_language, previous, action);
}

int init_setup_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(init_setup, previous, action);
}

int menu_setup_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(menu_setup, previous, action);
}
