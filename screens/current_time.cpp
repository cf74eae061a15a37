/* The clock: local time with a blinking colon, weekday and date. */
#include "core/actions.h"
#include "core/display.h"
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/format.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/text.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/router.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/time_zone.h"

/* Screen record. */
static LcdTimer idle_timer, refresh_timer;
static ScrollState bottom_line_scroll;
static bool colon_shown = true; // else a blank stands there, and the time read before is shown again
static bool clock_12h = true;
static tm local_time; // as last read

static void read_local_time()
{
    time_t seconds = router_time();
    const Setting zone("time_zone"), saving("time_daylight");
    if (saving.text()[0] == '1')
        seconds += 3600 * daylight_saving();
    seconds += 60 * time_adjust(zone.text());
    router_local_time(seconds, &local_time);
}

static void draw_time()
{
    const bool past_noon = clock_12h && local_time.tm_hour >= 13;
    char text[16];
    format_text(text, "%u%s%02u", static_cast<unsigned>(local_time.tm_hour - (past_noon ? 12 : 0)),
                colon_shown ? ":" : " ", static_cast<unsigned>(local_time.tm_min));
    drawString(124, 48, FONT_HUGE, ALIGN_RIGHT, DRAW_NORMAL, text);
}

static void draw_left(int x, int y, const char *text)
{
    drawString(x, y, FONT_TEXT, ALIGN_LEFT, DRAW_NORMAL, text);
}

static void draw_date()
{
    const char *weekday = ml_str(TEXT_SUNDAY + local_time.tm_wday);
    const char *month = ml_str(TEXT_JANUARY + local_time.tm_mon);
    const unsigned day = static_cast<unsigned>(local_time.tm_mday);
    const unsigned year = static_cast<unsigned>(local_time.tm_year) + 1900;
    char text[100];
    if (is_wide_language()) {
        draw_left(2, 29, weekday);
        format_text(text, "%s%s%u%s", month, ml_str(TEXT_MONTH_SEPARATOR), day, ml_str(TEXT_DAY_SUFFIX));
        draw_left(2, 63, text);
        format_text(text, "%u%s", year, ml_str(TEXT_YEAR_SUFFIX));
        draw_left(2, 45, text);
    } else {
        draw_left(3, 51, weekday);
        format_text(text, "%s %u", month, day);
        draw_left(3, 39, text);
        format_text(text, "%u", year);
        draw_left(3, 27, text);
    }
}

static void draw_half_of_day()
{
    const bool afternoon = local_time.tm_hour >= 13 || (local_time.tm_hour == 12 && local_time.tm_min > 0);
    drawString(125, 63, FONT_TEXT, ALIGN_RIGHT, DRAW_NORMAL, ml_str(afternoon ? TEXT_AFTERNOON : TEXT_MORNING));
}

static void draw_current_time(int action)
{
    if (colon_shown)
        read_local_time();
    clearScreenBuffer();
    draw_time();
    draw_date();
    if (clock_12h)
        draw_half_of_day();
    draw_status_rule();
    draw_status_bottom_line(action, &bottom_line_scroll);
    showScreen();
}

static void show_colon()
{
    colon_shown = true;
}

static void blink_colon()
{
    colon_shown = !colon_shown;
}

static const Conduct current_time = {
    .idle_timer = &idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_current_time,
    .idle = IDLE_POWER_SAVE_ONLY,
    .up_down = UP_DOWN_REFRESH,
    .refresh_ticks = 4,
    .on_enter = show_colon,
    .on_refresh = blink_colon,
    .left = "guest access",
    .right = "network status",
};

int display_time_handle(const ScreenEntry *previous, int action)
{
    if (action == ACTION_UP || action == ACTION_DOWN)
        clock_12h = !clock_12h;
    return run_conduct(current_time, previous, action);
}
