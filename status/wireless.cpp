#include "status/wireless.h"

#include "core/command.h"
#include "core/file.h"
#include "core/number.h"
#include "platform/nvram.h"
#include "platform/router.h"

#include <cstring>

static constexpr const char *RADIO_KEY = "wifi_dot11_mode";
static constexpr const char *RADIO_OFF = "0";
static constexpr const char *RADIO_ON = "7";
static constexpr const char *CHANNEL_COMMAND = "/sbin/iwlist ath0 channel  2> /dev/null";
static constexpr const char *RESTART_COMMAND = "rc wireless restart&";
static constexpr int UNKNOWN_CHANNEL = 6;
static constexpr const char *DIGITS = "0123456789";

bool is_wireless_radio_on()
{
    return Setting(RADIO_KEY).text()[0] != RADIO_OFF[0];
}

void toggle_wireless_radio()
{
    nvram_set(RADIO_KEY, is_wireless_radio_on() ? RADIO_OFF : RADIO_ON);
    nvram_commit();
    restart_wireless();
}

void restart_wireless()
{
    router_system(RESTART_COMMAND);
}

int wl_auto_channel()
{
    if (!is_wireless_radio_on())
        return UNKNOWN_CHANNEL;
    const CommandOutput report(CHANNEL_COMMAND);
    const char *current = report.text() ? strstr(report.text(), "Current Frequency") : nullptr;
    const char *channel = current ? strstr(current, "Channel") : nullptr;
    const char *number = channel ? strpbrk(channel, DIGITS) : nullptr;
    if (!number)
        return UNKNOWN_CHANNEL;
    char digits[8] = {};
    memcpy(digits, number, strnlen(number, sizeof digits - 1));
    return parse_int(digits);
}
