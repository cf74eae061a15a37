/* WPS: its menu, switching it on and off, its help, and the push-button pairing with its two outcomes. */
#include "core/actions.h"
#include "core/file.h"
#include "core/handlers.h"
#include "core/number.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/nvram.h"
#include "platform/router.h"
#include "screens/conduct.h"
#include "screens/page.h"

#include <cstdint>
#include <cstring>

static constexpr const char *WPS_KEY = "wifi_wsc_enable";
static constexpr const char *REBOOT_DELAY_COMMAND = "sleep 10";
static constexpr const char *REBOOT_COMMAND = "/sbin/reboot &";

/* The contract with the WPS service: how a pairing is started, and the files that tell its outcome. */
static constexpr const char *PUSH_BUTTON_FILE = "/proc/wsc_pbc";
static constexpr const char *FLASH_COMMAND = "/bin/echo 1 > /var/pbc_flash";
static constexpr const char *PRESSED_COMMAND = "/bin/echo 1 > /var/wps_pbc_pressed";
static constexpr const char *START_FILE = "/var/wps_start";
static constexpr const char *SUCCESS_FILE = "/var/wps_success";
static constexpr const char *STOP_FILE = "/var/wps_stop";
static constexpr const char *OVERLAP_FILE = "/var/wps_overlap";
static constexpr const char *ERROR_FILE = "/var/wps_error";

static constexpr int PAIRING_SECONDS = 120;

/* The halves of a second; a timer takes one tick more than it is armed for. */
static constexpr unsigned FIRST_HALF_TICKS = 5, SECOND_HALF_TICKS = 4;

/* Screen records, shared by all screens but "WPS start", which has a timer of its own, but for the idle timers. */
static LcdTimer setup_idle_timer, on_off_idle_timer, help_idle_timer, disabled_idle_timer, complete_idle_timer,
    fail_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;

static int32_t wps_enable_cache = 2; // the setting as last read; 2: not yet

/* A running pairing: seconds left, 0 for none, and the half of the second that is being counted. */
static int32_t wps_countdown;
static bool wps_phase;
static LcdTimer wps_timer;

static int get_wps_enable()
{
    wps_enable_cache = parse_int(Setting(WPS_KEY).text());
    return wps_enable_cache;
}

static void toggle_wps_enable()
{
    wps_enable_cache = wps_enable_cache == 1 ? 0 : 1;
    nvram_set(WPS_KEY, wps_enable_cache == 1 ? "1" : "0");
    nvram_commit();
}

/* "WPS setup": its items depend on whether WPS is on. */

static const char *const items_on[] = {"WPS start", "wps on-off", "wps help", nullptr};
static const char *const items_off[] = {"wps on-off", "wps help", nullptr};

static void draw_wps_setup(bool on, const char *const *labels, int action)
{
    Title title;
    format_on_off_title(title, TEXT_WPS_TITLE, on);
    draw_list(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &state, action);
}

static void draw_wps_setup_on(int action)
{
    const char *const labels[] = {
        ml_str(TEXT_WPS_START_TITLE),
        ml_str(TEXT_TURN_OFF),
        ml_str(TEXT_ABOUT_ITEM),
        nullptr,
    };
    draw_wps_setup(true, labels, action);
}

static void draw_wps_setup_off(int action)
{
    const char *const labels[] = {ml_str(TEXT_TURN_ON), ml_str(TEXT_ABOUT_ITEM), nullptr};
    draw_wps_setup(false, labels, action);
}

static const Conduct wps_setup_on = {
    .idle_timer = &setup_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_setup_on,
    .items = items_on,
    .list_state = &state,
    .left = "security options",
};

static const Conduct wps_setup_off = {
    .idle_timer = &setup_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_setup_off,
    .items = items_off,
    .list_state = &state,
    .left = "security options",
};

int WPS_setup_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(get_wps_enable() == 1 ? wps_setup_on : wps_setup_off, previous, action);
}

/* "wps on-off": ok switches WPS over and restarts the router. */

static void draw_wps_on_off(int action)
{
    const bool on = get_wps_enable() == 1;
    Title title;
    format_on_off_title(title, TEXT_WPS_TITLE, on);
    draw_page(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE),
              ml_str(on ? TEXT_WPS_CONFIRM_OFF : TEXT_WPS_CONFIRM_ON), &state, action);
}

static void switch_wps_and_reboot()
{
    toggle_wps_enable();
    draw_page(ml_str(TEXT_RESTARTING), nullptr, ml_str(TEXT_PLEASE_WAIT), &state, ACTION_ENTER);
    router_system(REBOOT_DELAY_COMMAND);
    router_system(REBOOT_COMMAND);
}

static const Conduct wps_on_off = {
    .idle_timer = &on_off_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_on_off,
    .left = "WPS setup",
    .on_ok = switch_wps_and_reboot,
};

int WPS_on_off_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wps_on_off, previous, action);
}

/* The pages that only tell. */

static void draw_wps_help(int action)
{
    draw_page(ml_str(TEXT_ABOUT_ITEM), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(TEXT_WPS_HELP), &state, action);
}

static void draw_wps_wireless_disabled(int action)
{
    draw_page(ml_str(TEXT_WPS_NEEDS_RADIO_TITLE), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(TEXT_WPS_NEEDS_RADIO),
              &state, action);
}

static void draw_wps_complete(int action)
{
    draw_page(ml_str(TEXT_WPS_COMPLETE_TITLE), nullptr, ml_str(TEXT_WPS_COMPLETE), &state, action);
}

static void draw_wps_fail(int action)
{
    draw_page(ml_str(TEXT_WPS_FAIL_TITLE), nullptr, ml_str(TEXT_WPS_FAIL), &state, action);
}

static const Conduct wps_help = {
    .idle_timer = &help_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_help,
    .left = "WPS setup",
};

static const Conduct wps_wireless_disabled = {
    .idle_timer = &disabled_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_wireless_disabled,
    .left = "security options",
};

static const Conduct wps_complete = {
    .idle_timer = &complete_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_complete,
    .ok = "WPS setup",
};

static const Conduct wps_fail = {
    .idle_timer = &fail_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_wps_fail,
    .left = "WPS setup",
    .ok = "WPS setup",
};

int WPS_help_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wps_help, previous, action);
}

int WPS_wireless_disabled_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wps_wireless_disabled, previous, action);
}

int WPS_complete_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wps_complete, previous, action);
}

int WPS_fail_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(wps_fail, previous, action);
}

/* "WPS start": a push-button pairing with its countdown; no key leaves it. */

/* Tells the wireless driver to start. False when it is not there. */
static bool write_start_record()
{
    /* In the processor's own byte order, as the driver reads it. */
    static constexpr uint32_t START_RECORD[4] = {1};
    const File push_button(PUSH_BUTTON_FILE, O_WRONLY | O_CREAT | O_TRUNC);
    if (!push_button)
        return false;
    /* The outcomes of a former pairing go before the service can report that of this one. */
    for (const char *file : {SUCCESS_FILE, ERROR_FILE, START_FILE, OVERLAP_FILE, STOP_FILE})
        router_remove(file);
    push_button.write_full(START_RECORD, sizeof START_RECORD);
    return true;
}

static void start_wps_pbc()
{
    if (!write_start_record())
        return;
    router_system(FLASH_COMMAND);
    router_system(PRESSED_COMMAND);
}

static void draw_wps_start(int action)
{
    Title title;
    format_text(title, "%s\t%d:%02d", ml_str(TEXT_WPS_START_TITLE), wps_countdown / 60, wps_countdown % 60);
    draw_page(title.data(), nullptr, ml_str(TEXT_WPS_START), &state, action);
}

static void enter_pairing()
{
    start_wps_pbc();
    init_timer(&wps_timer, FIRST_HALF_TICKS);
    wps_phase = true;
    if (wps_countdown == 0)
        wps_countdown = PAIRING_SECONDS;
    draw_wps_start(ACTION_ENTER);
}

/* The page that an outcome leads to; null while the pairing runs. */
static const char *pairing_outcome()
{
    if (router_exists(SUCCESS_FILE))
        return "completeWPS";
    for (const char *file : {STOP_FILE, OVERLAP_FILE, ERROR_FILE})
        if (router_exists(file))
            return "failWPS";
    return wps_countdown == 0 ? "failWPS" : nullptr;
}

static void count_half_second()
{
    wps_phase = !wps_phase;
    init_timer(&wps_timer, wps_phase ? FIRST_HALF_TICKS : SECOND_HALF_TICKS);
    if (wps_phase)
        wps_countdown--;
}

static void step_pairing(int action)
{
    if (const char *outcome = pairing_outcome()) {
        wps_countdown = 0;
        switch_screen(outcome);
        return;
    }
    const bool due = timer_expired(&wps_timer);
    if (due)
        count_half_second();
    if (due || action != ACTION_TICK)
        draw_wps_start(action);
}

int WPS_start_handle(const ScreenEntry *, int action)
{
    if (action == ACTION_ENTER)
        enter_pairing();
    else if (action == ACTION_TICK || action == ACTION_UP || action == ACTION_DOWN)
        step_pairing(action);
    return 0;
}
