/* Guest access: the second wireless network for visitors. */
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/nvram.h"
#include "platform/router.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/wireless.h"

#include <cstdlib>
#include <cstring>

static constexpr const char *SWITCH_KEY = "wifi_gacable";
static constexpr const char *NAME_KEY = "wifi_gssid";
static constexpr const char *PASSWORD_KEY = "wifi_psk_guest_pwd";
static constexpr size_t PASSWORD_LENGTH = 8; // shortest that the network takes, and length of one made here

enum GuestAccess { GUEST_ACCESS_ON, GUEST_ACCESS_OFF, GUEST_ACCESS_UNAVAILABLE, GUEST_ACCESS_NOT_READ };

/* Screen records, shared but for the idle timers. */
static LcdTimer menu_idle_timer, confirm_idle_timer, login_idle_timer, help_idle_timer, status_idle_timer;
static LcdTimer refresh_timer;
static WidgetState state;
static InfoRow login_rows[3]; // name, password, end

/* As last computed; the confirm page refreshes it at every draw. */
static int guest_access_state = GUEST_ACCESS_NOT_READ;

static const char *const guest_items[] = {"ga confirm", "ga login info", "ga help", nullptr};

static int get_guest_access_state()
{
    const Setting enabled(SWITCH_KEY), security("wifi_security"), gateway("wifi_if_on");
    if (strcmp(security.text(), "disabled") == 0 || strcmp(security.text(), "wep") == 0 || gateway.text()[0] != '0')
        guest_access_state = GUEST_ACCESS_UNAVAILABLE;
    else
        guest_access_state = enabled.text()[0] == '1' ? GUEST_ACCESS_ON : GUEST_ACCESS_OFF;
    return guest_access_state;
}

static void make_password()
{
    static constexpr unsigned long REPLACES_ZERO = 40320;
    srandom(static_cast<unsigned>(router_time()));
    unsigned long number = static_cast<unsigned long>(random());
    if (number == 0)
        number = REPLACES_ZERO;
    char password[PASSWORD_LENGTH + 1] = {};
    for (unsigned k = 1; k <= PASSWORD_LENGTH; k++)
        password[k - 1] = static_cast<char>('0' + number % k);
    nvram_set(PASSWORD_KEY, password);
}

static void toggle_guest_access()
{
    if (guest_access_state == GUEST_ACCESS_ON) {
        nvram_set(SWITCH_KEY, "0");
        guest_access_state = GUEST_ACCESS_OFF;
    } else {
        const Setting password(PASSWORD_KEY);
        nvram_set(SWITCH_KEY, "1");
        guest_access_state = GUEST_ACCESS_ON;
        if (strlen(password.text()) < PASSWORD_LENGTH)
            make_password();
    }
    nvram_commit();
    restart_wireless();
}

/* "guest access menu": a list, or a notice while guest access cannot be had. */

static void draw_guest_access_menu(int action)
{
    const bool on = guest_access_state == GUEST_ACCESS_ON;
    Title title;
    format_on_off_title(title, TEXT_GUEST_TITLE, on);
    const char *const labels[] = {
        ml_str(on ? TEXT_TURN_OFF : TEXT_TURN_ON),
        ml_str(TEXT_GUEST_LOGIN_ITEM),
        ml_str(TEXT_GUEST_HELP_TITLE),
        nullptr,
    };
    draw_list(title.data(), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), labels, &state, action);
}

static void draw_guest_access_unavailable(int action)
{
    draw_page(ml_str(TEXT_GUEST_UNAVAILABLE_TITLE), ml_str(TEXT_GUEST_UNAVAILABLE_BOTTOM_LINE),
              ml_str(TEXT_GUEST_UNAVAILABLE), &state, action);
}

static const Conduct guest_menu = {
    .idle_timer = &menu_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_menu,
    .items = guest_items,
    .list_state = &state,
    .left = "security options",
};

static const Conduct guest_notice = {
    .idle_timer = &menu_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_unavailable,
    .left = "security options",
};

int guest_access_menu_handle(const ScreenEntry *previous, int action)
{
    const bool unavailable = get_guest_access_state() == GUEST_ACCESS_UNAVAILABLE;
    return run_conduct(unavailable ? guest_notice : guest_menu, previous, action);
}

/* "ga confirm" */

static void draw_guest_access_confirm(int action)
{
    const bool on = get_guest_access_state() == GUEST_ACCESS_ON;
    Title title;
    format_on_off_title(title, TEXT_GUEST_TITLE, on);
    draw_page(title.data(), nullptr, ml_str(on ? TEXT_GUEST_CONFIRM_OFF : TEXT_GUEST_CONFIRM_ON), &state, action);
}

static const Conduct guest_confirm = {
    .idle_timer = &confirm_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_confirm,
    .left = "guest access menu",
    .ok = "guest access menu",
    .on_ok = toggle_guest_access,
};

int guest_access_confirm_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(guest_confirm, previous, action);
}

/* Name and password: below the menu, and as one of the ring of status screens. */

static void fill_login_rows()
{
    memset(login_rows, 0, sizeof login_rows);
    format_text(login_rows[0].label, "%s: %s", ml_str(TEXT_GUEST_NETWORK_NAME), Setting(NAME_KEY).text());
    format_text(login_rows[1].label, "%s: %s", ml_str(TEXT_GUEST_PASSWORD), Setting(PASSWORD_KEY).text());
}

static void draw_guest_access_info(int action, const char *bottom_line)
{
    const bool on = get_guest_access_state() == GUEST_ACCESS_ON;
    Title title;
    format_on_off_title(title, TEXT_GUEST_TITLE, on);
    if (!on)
        return draw_page(title.data(), bottom_line, ml_str(TEXT_GUEST_IS_OFF), &state, action);
    fill_login_rows();
    draw_table(title.data(), bottom_line, login_rows, &state, action);
}

static void draw_guest_access_login(int action)
{
    draw_guest_access_info(action, ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE));
}

static void draw_guest_access_status(int action)
{
    draw_guest_access_info(action, ml_str(TEXT_STATUS_BOTTOM_LINE));
}

static const Conduct guest_login = {
    .idle_timer = &login_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_login,
    .left = "guest access menu",
};

static const Conduct guest_status = {
    .idle_timer = &status_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_status,
    .idle = IDLE_POWER_SAVE_ONLY,
    .left = "computer usage",
    .right = "current time",
};

int guest_access_login_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(guest_login, previous, action);
}

int guest_access_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(guest_status, previous, action);
}

/* "ga help" */

static void draw_guest_access_help(int action)
{
    draw_page(ml_str(TEXT_GUEST_HELP_TITLE), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), ml_str(TEXT_GUEST_HELP), &state,
              action);
}

static const Conduct guest_help = {
    .idle_timer = &help_idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_guest_access_help,
    .left = "guest access menu",
};

int guest_access_help_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(guest_help, previous, action);
}
