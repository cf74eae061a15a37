/* The state of the router's links, as its companion daemon publishes it, and the phases of blinking pictures. */
#pragma once

#include <cstdint>

enum LinkState { STATUS_OFF = 0, STATUS_ON = 1, STATUS_BLINK = 2 };

/* The entries, in the order in which their files are read. */
enum StatusEntry {
    STATUS_INTERNET,
    STATUS_WAN,
    STATUS_POWER, // read, drawn nowhere
    STATUS_WIRELESS,
    STATUS_LAN,
    STATUS_WIRELESS_CLIENT,
    STATUS_SECURITY,
    STATUS_ENTRY_COUNT,
};

struct NetworkStatusEntry {
    int32_t state;    // LinkState that the file said last
    int32_t shown;    // phase of the last redraw: 1 drawn, 0 hidden
    int32_t previous; // remembered phase of the blink machine
};

extern NetworkStatusEntry network_status_table[STATUS_ENTRY_COUNT];

/* Forgets all states and phases, as at program start. */
void reset_network_status();

/* Reads the seven files into the table and the number of wireless clients into `*client_count`. An entry whose file is
 * missing, or says nothing known, keeps the phase that is shown. */
void read_network_status(int *client_count);

/* Moves every entry to its next phase; called once per redraw, after read_network_status. A blinking entry goes hidden,
 * drawn, drawn. */
void update_status_phases();

struct Connection {
    bool link; // the WAN port has link
    bool internet;
};

/* Whether the router is connected. While the router is not the gateway (nvram wifi_if_on is not 0) both count as
 * present; a missing file counts as absent. */
Connection check_connection();
