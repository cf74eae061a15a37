/* The router's addresses and the type of its WAN connection. */
#include "core/file.h"
#include "core/handlers.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "screens/conduct.h"
#include "screens/page.h"
#include "status/wan.h"

#include <cstring>

/* Screen record. */
static LcdTimer idle_timer, refresh_timer;
static WidgetState state;
static InfoRow router_info_rows[4]; // WAN address, LAN address, connection type, end

struct ConnectionType {
    const char *mode; // as nvram wan_mode says
    TextId name;
};

static const ConnectionType connection_types[] = {
    {"static", TEXT_TYPE_STATIC}, {"pppoe", TEXT_TYPE_PPPOE}, {"pptp", TEXT_TYPE_PPTP},
    {"l2tp", TEXT_TYPE_L2TP},     {"bpa", TEXT_TYPE_BPA},     {"multi_pppoe", TEXT_TYPE_MULTI_PPPOE},
};

static TextId connection_type(const char *mode)
{
    for (const ConnectionType &type : connection_types)
        if (strcmp(type.mode, mode) == 0)
            return type.name;
    return TEXT_TYPE_DHCP;
}

static void fill_row(InfoRow &row, TextId label, const char *value)
{
    format_text(row.label, "%s: %s", ml_str(label), value);
}

static void draw_router_information(int action)
{
    const Setting lan_address("lan_ipaddr"), wan_mode("wan_mode");
    char wan_address[16];
    memset(router_info_rows, 0, sizeof router_info_rows);
    fill_row(router_info_rows[0], TEXT_WAN_ADDRESS, get_wan_address_text(wan_address));
    fill_row(router_info_rows[1], TEXT_LAN_ADDRESS, lan_address.text());
    fill_row(router_info_rows[2], TEXT_CONNECTION_TYPE, ml_str(connection_type(wan_mode.text())));
    draw_table(ml_str(TEXT_ROUTER_INFO_TITLE), ml_str(TEXT_MENU_FAMILY_BOTTOM_LINE), router_info_rows, &state, action);
}

static const Conduct router_information = {
    .idle_timer = &idle_timer,
    .refresh_timer = &refresh_timer,
    .draw = draw_router_information,
    .left = "menu",
};

int router_information_handle(const ScreenEntry *previous, int action)
{
    return run_conduct(router_information, previous, action);
}
