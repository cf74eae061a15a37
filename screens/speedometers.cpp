/* The speedometers: dials that show the current speed as a part of the highest one seen. */
#include "core/display.h"
#include "core/handlers.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/shapes.h"
#include "gfx/text.h"
#include "gfx/utf8.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/traffic.h"

#include <algorithm>
#include <array>
#include <cstring>

/* Screen records; the refresh timer and the bottom line's marquee are shared. */
static LcdTimer total_idle_timer, both_idle_timer;
static LcdTimer refresh_timer;
static ScrollState heading_scroll, download_label_scroll, upload_label_scroll, bottom_line_scroll;

static constexpr uint32_t SMALL_SPEED = 1000000; // up to here speed * 180 is sure to fit 32 bits
static constexpr uint32_t SMALLEST_ANGLE = 5;    // degrees, so that any traffic shows
static constexpr int FULL_ANGLE = 180;

/* Characters that a dial has room for, by Direction. */
static constexpr int NUMBER_LENGTH[DIRECTION_COUNT] = {6, 5};

/* A half circle around (x, y) and the band outside it; all in pixels. */
struct Dial {
    int radius, band_radius, x, y;
};

struct Gauge {
    uint32_t speed;
    uint32_t angle; // degrees of the band, 0 to 180
};

using Number = std::array<char, 32>;

static Gauge read_gauge(Direction direction)
{
    const uint32_t speed = read_speed(direction);
    const uint32_t peak = std::max(get_peak_speed(direction), speed);
    if (peak == 0)
        return {speed, 0};
    if (speed > SMALL_SPEED)
        return {speed, speed / 1000 * FULL_ANGLE / (peak / 1000)};
    return {speed, speed * FULL_ANGLE / peak};
}

static void draw_dial(const Dial &dial, const Gauge &gauge)
{
    drawCircle(dial.radius, dial.x, dial.y, FULL_ANGLE);
    const uint32_t angle = gauge.speed == 0 ? gauge.angle : std::max(gauge.angle, SMALLEST_ANGLE);
    if (angle != 0)
        drawBresenhamSector(dial.radius, dial.band_radius, dial.x, dial.y, static_cast<int>(angle));
}

/* A lone zero stands in the middle; other numbers grow to the left from `right`. */
static void draw_number(const Number &number, int centre, int right, int y, int font)
{
    if (strcmp(number.data(), "0") == 0)
        drawString(centre, y, font, ALIGN_CENTER, DRAW_NORMAL, number.data());
    else
        drawString(right, y, font, ALIGN_RIGHT, DRAW_NORMAL, number.data());
}

static void draw_unit(uint32_t speed)
{
    drawString(LCD_WIDTH - 1, 63, FONT_TEXT, ALIGN_RIGHT, DRAW_NORMAL,
               ml_str(is_mega(speed) ? TEXT_DIAL_UNIT_MEGA : TEXT_DIAL_UNIT_KILO));
}

static void draw_total_speedometer(int action)
{
    const bool wide = is_wide_language();
    const Gauge gauge = read_gauge(DOWNLOAD);
    clearScreenBuffer();
    drawStringScroll(0, 63, FONT_TEXT, ALIGN_LEFT, DRAW_NORMAL, ml_str(TEXT_DIAL_HEADING), 35, action, &heading_scroll);
    draw_unit(gauge.speed);
    Number number;
    format_dial_value(number, gauge.speed);
    cut_text(number.data(), NUMBER_LENGTH[DOWNLOAD]);
    draw_number(number, 63, 89, wide ? 44 : 37, FONT_LARGE);
    drawString(63, wide ? 27 : 22, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL, ml_str(TEXT_DIAL_TOTAL));
    draw_dial({44, 50, 63, status_rule_row()}, gauge);
    draw_status_rule();
    draw_status_bottom_line(action, &bottom_line_scroll);
    showScreen();
}

/* The numbers of both directions in one unit, that of the larger speed. */
static void format_numbers(const Gauge (&gauges)[DIRECTION_COUNT], Number (&numbers)[DIRECTION_COUNT])
{
    const Direction larger = gauges[UPLOAD].speed < gauges[DOWNLOAD].speed ? DOWNLOAD : UPLOAD;
    const Direction smaller = larger == DOWNLOAD ? UPLOAD : DOWNLOAD;
    format_dial_value(numbers[larger], gauges[larger].speed);
    if (is_mega(gauges[larger].speed))
        format_dial_value_mega(numbers[smaller], gauges[smaller].speed);
    else
        format_dial_value(numbers[smaller], gauges[smaller].speed);
    for (int i = 0; i < DIRECTION_COUNT; i++)
        cut_text(numbers[i].data(), NUMBER_LENGTH[i]);
}

static void draw_download_dial(const Gauge &gauge, const Number &number, int action)
{
    const bool wide = is_wide_language();
    drawStringScroll(85, wide ? 27 : 22, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL, ml_str(TEXT_DIAL_DOWNLOAD), 54, action,
                     &download_label_scroll);
    draw_dial({31, 38, 85, status_rule_row()}, gauge);
    draw_number(number, 85, 100, wide ? 38 : 33, FONT_TEXT);
}

static void draw_upload_dial(const Gauge &gauge, const Number &number, int action)
{
    draw_dial({18, 23, 26, 38}, gauge);
    draw_number(number, 26, 39, 50, FONT_TEXT);
    drawLine(1, 38, 50);
    drawStringScroll(26, is_wide_language() ? 37 : 39, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL, ml_str(TEXT_DIAL_UPLOAD),
                     40, action, &upload_label_scroll);
}

static void draw_upload_download_speedometer(int action)
{
    clearScreenBuffer();
    Gauge gauges[DIRECTION_COUNT] = {read_gauge(DOWNLOAD), read_gauge(UPLOAD)};
    if (gauges[DOWNLOAD].speed == 0)
        gauges[UPLOAD] = {};
    Number numbers[DIRECTION_COUNT];
    format_numbers(gauges, numbers);
    draw_unit(std::max(gauges[DOWNLOAD].speed, gauges[UPLOAD].speed));
    draw_download_dial(gauges[DOWNLOAD], numbers[DOWNLOAD], action);
    draw_status_rule();
    draw_upload_dial(gauges[UPLOAD], numbers[UPLOAD], action);
    draw_status_bottom_line(action, &bottom_line_scroll);
    showScreen();
}

static const Conduct total_speedometer = {
    .idle_timer = &total_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_total_speedometer,
    .idle = IDLE_POWER_SAVE_ONLY,
    .up_down = UP_DOWN_NOTHING,
    .left = "network status",
    .right = "upload-download speedometer",
};

static const Conduct upload_download_speedometer = {
    .idle_timer = &both_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_upload_download_speedometer,
    .idle = IDLE_POWER_SAVE_ONLY,
    .up_down = UP_DOWN_NOTHING,
    .left = "total speedometer",
    .right = "computer speed",
};

int total_spdm_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(total_speedometer, previous, action);
}

int upld_dl_spdm_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(upload_download_speedometer, previous, action);
}
