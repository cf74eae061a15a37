/* The home screen: the router's links as a row of pictures, the wireless network and its clients. */
#include "status/network_status.h"

#include "core/display.h"
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/bitmap.h"
#include "gfx/format.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/text.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/wireless.h"

/* Screen record. */
static LcdTimer idle_timer, refresh_timer;
static ScrollState bottom_line_scroll, name_scroll, count_scroll;

/* By whether the wired side is shown, then the wireless side. */
static const char *const router_pictures[2][2] = {
    {"icons_router_noWL_noW", "icons_router_withWL_noW"},
    {"icons_router_noWL_withW", "icons_router_withWL_withW"},
};

static constexpr int PICTURE_TOP = 60;

static bool is_shown(StatusEntry entry)
{
    return network_status_table[entry].shown == 1;
}

static void draw_if_shown(StatusEntry entry, int x, const char *picture)
{
    if (is_shown(entry))
        drawFigure(DRAW_NORMAL, x, PICTURE_TOP, picture);
}

static void draw_pictures()
{
    draw_if_shown(STATUS_INTERNET, 5, "icon_internet");
    draw_if_shown(STATUS_WAN, 24, "icon_modem");
    drawFigure(DRAW_NORMAL, 37, PICTURE_TOP, router_pictures[is_shown(STATUS_LAN)][is_shown(STATUS_WIRELESS)]);
    draw_if_shown(STATUS_WIRELESS_CLIENT, 79, "icon_wirelessPC");
    draw_if_shown(STATUS_SECURITY, 104, "icon_security");
}

static void draw_centred(int y, const char *text, int action, ScrollState *scroll)
{
    drawStringScroll(LCD_WIDTH / 2, y, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL, text, LCD_WIDTH, action, scroll);
}

static void draw_network(int client_count, int action)
{
    const bool wide = is_wide_language();
    char text[100];
    format_text(text, "%s", Setting("wifi_ssid").text());
    draw_centred(wide ? 41 : 37, text, action, &name_scroll);
    const TextId label = client_count == 1 ? TEXT_CLIENT_COUNT_ONE : TEXT_CLIENT_COUNT;
    format_text(text, "%s: %d", ml_str(label), client_count);
    draw_centred(wide ? 27 : 24, text, action, &count_scroll);
}

static void draw_network_status(int action)
{
    const bool radio_on = is_wireless_radio_on();
    clearScreenBuffer();
    int client_count;
    read_network_status(&client_count);
    update_status_phases();
    draw_pictures();
    if (radio_on)
        draw_network(client_count, action);
    else
        draw_centred(34, ml_str(TEXT_WIRELESS_IS_OFF), action, &count_scroll);
    draw_status_rule();
    draw_status_bottom_line(action, &bottom_line_scroll);
    showScreen();
}

static const Conduct network_status = {
    .idle_timer = &idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_network_status,
    .idle = IDLE_POWER_SAVE_ONLY,
    .up_down = UP_DOWN_NOTHING,
    .on_enter = reset_network_status,
    .left = "current time",
    .right = "total speedometer",
};

int network_status_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(network_status, previous, action);
}
