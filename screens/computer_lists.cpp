/* The attached computers with their speeds, and with their amounts of data. */
#include "status/computers.h"

#include "core/actions.h"
#include "core/handlers.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"

/* Screen records, shared but for the idle timers. */
static LcdTimer speed_idle_timer, usage_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;

static void draw_computers(ComputerKind kind, TextId title, int action)
{
    build_computer_rows(kind);
    /* No action of the widget's: it keeps its place and moves long names on. */
    const int step = action == ACTION_TICK ? ACTION_NONE : action;
    draw_table(ml_str(title), ml_str(TEXT_STATUS_BOTTOM_LINE), computer_rows, &state, step);
}

static void draw_computer_speed(int action)
{
    draw_computers(COMPUTER_SPEED, TEXT_COMPUTER_SPEED_TITLE, action);
}

static void draw_computer_usage(int action)
{
    draw_computers(COMPUTER_USAGE, TEXT_COMPUTER_USAGE_TITLE, action);
}

static const Conduct computer_speed = {
    .idle_timer = &speed_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_computer_speed,
    .idle = IDLE_POWER_SAVE_ONLY,
    .left = "upload-download speedometer",
    .right = "computer usage",
};

static const Conduct computer_usage = {
    .idle_timer = &usage_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_computer_usage,
    .idle = IDLE_POWER_SAVE_ONLY,
    .up_down = UP_DOWN_REARM_AND_DRAW,
    .left = "computer speed",
    .right = "guest access",
};

int computer_speed_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(computer_speed, previous, action);
}

int computer_usage_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(computer_usage, previous, action);
}
