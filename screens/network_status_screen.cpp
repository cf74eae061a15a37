/* The home screen: the router's links as a row of pictures, the wireless network and its clients. */
#include "status/network_status.h"

#include "core/display.h"
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/bitmap.h"
#include "gfx/format.h"
#include "gfx/frame_buffer.h"
#include "gfx/text.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "status/wireless.h"

/* Screen record. */
static LcdTimer idle_timer, refresh_timer;
static ScrollState bottom_line_scroll, name_scroll, count_scroll;

struct LinkPicture {
    StatusEntry entry;
    int x;
    const char *name;
};

static const LinkPicture link_pictures[] = {
    {STATUS_INTERNET, 5, "icon_internet"},
    {STATUS_WAN, 24, "icon_modem"},
    {STATUS_WIRELESS_CLIENT, 79, "icon_wirelessPC"},
    {STATUS_SECURITY, 104, "icon_security"},
};

/* By whether the wired side is shown, then the wireless side. */
static const char *const router_pictures[2][2] = {
    {"icons_router_noWL_noW", "icons_router_withWL_noW"},
    {"icons_router_noWL_withW", "icons_router_withWL_withW"},
};

static constexpr int PICTURE_TOP = 60;
static constexpr int ROUTER_X = 37;

static bool is_shown(StatusEntry entry)
{
    return network_status_table[entry].shown == 1;
}

static void draw_pictures()
{
    for (const LinkPicture &picture : link_pictures)
        if (is_shown(picture.entry))
            drawFigure(DRAW_NORMAL, picture.x, PICTURE_TOP, picture.name);
    drawFigure(DRAW_NORMAL, ROUTER_X, PICTURE_TOP, router_pictures[is_shown(STATUS_LAN)][is_shown(STATUS_WIRELESS)]);
}

static void draw_centred(int y, const char *text, int action, ScrollState *scroll)
{
    drawStringScroll(LCD_WIDTH / 2, y, 1, ALIGN_CENTER, DRAW_NORMAL, text, LCD_WIDTH, action, scroll);
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
    drawLine(0, is_wide_language() ? 13 : 11, LCD_WIDTH);
    draw_centred(is_wide_language() ? 12 : 11, ml_str(TEXT_STATUS_BOTTOM_LINE), action, &bottom_line_scroll);
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
