#include "status/network_status.h"

#include "core/file.h"
#include "core/number.h"

#include <array>
#include <cstdio>
#include <cstring>

static constexpr const char *STATUS_FOLDER = "/tmp/lcd/network_status/";

/* Indexed by StatusEntry. */
static const char *const status_names[STATUS_ENTRY_COUNT + 1] = {
    "internet", "wan", "power", "wireless", "lan", "wireless_client", "security", nullptr,
};

NetworkStatusEntry network_status_table[STATUS_ENTRY_COUNT];

using StatusLine = std::array<char, 200>;

void reset_network_status()
{
    memset(network_status_table, 0, sizeof network_status_table);
}

static bool begins_with(const char *text, const char *start)
{
    return strncmp(text, start, strlen(start)) == 0;
}

/* Reads the first line of an entry's file; false when it cannot be opened. */
static bool read_status_line(StatusEntry entry, StatusLine &line)
{
    char path[64];
    snprintf(path, sizeof path, "%s%s", STATUS_FOLDER, status_names[entry]);
    return read_first_line(path, line);
}

/* What stands behind the entry's name and one separator, whatever that is. */
static const char *value_of(StatusEntry entry, const StatusLine &line)
{
    const size_t start = strlen(status_names[entry]) + 1;
    return strlen(line.data()) < start ? "" : line.data() + start;
}

/* The state that `value` says; a number also sets the client count. */
static int classify(const char *value, int shown, int *client_count)
{
    if (begins_with(value, "blink"))
        return STATUS_BLINK;
    if (begins_with(value, "on"))
        return STATUS_ON;
    if (begins_with(value, "off"))
        return STATUS_OFF;
    if (*value == '\0' || (*value >= '0' && *value <= '9')) {
        *client_count = parse_int(value);
        return *client_count >= 1 ? STATUS_ON : STATUS_OFF;
    }
    return shown;
}

void read_network_status(int *client_count)
{
    *client_count = 0;
    for (int i = 0; i < STATUS_ENTRY_COUNT; i++) {
        const StatusEntry id = static_cast<StatusEntry>(i);
        NetworkStatusEntry &entry = network_status_table[i];
        StatusLine line;
        entry.state =
            read_status_line(id, line) ? classify(value_of(id, line), entry.shown, client_count) : entry.shown;
    }
}

static void advance_blink(NetworkStatusEntry &entry)
{
    if (entry.previous == entry.shown) {
        entry.shown = !entry.shown;
    } else {
        entry.previous = entry.shown;
        entry.shown = 1;
    }
}

void update_status_phases()
{
    for (NetworkStatusEntry &entry : network_status_table) {
        if (entry.state == STATUS_BLINK)
            advance_blink(entry);
        else
            entry.shown = entry.previous = entry.state != STATUS_OFF;
    }
}

Connection check_connection()
{
    if (parse_int(Setting("wifi_if_on").text()) != 0)
        return {.link = true, .internet = true};
    StatusLine internet, wan;
    Connection connection = {};
    if (read_status_line(STATUS_INTERNET, internet))
        connection.internet = begins_with(value_of(STATUS_INTERNET, internet), "on");
    if (read_status_line(STATUS_WAN, wan) && wan[0] != '\0')
        connection.link = !begins_with(value_of(STATUS_WAN, wan), "off");
    return connection;
}
