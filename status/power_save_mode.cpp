#include "status/power_save_mode.h"

#include "core/file.h"
#include "platform/nvram.h"

#include <cstring>

static constexpr const char *POWER_SAVE_KEY = "lcd_power_save_mode";

enum { POWER_SAVE_ON, POWER_SAVE_OFF, POWER_SAVE_NOT_READ };

static int power_save_mode = POWER_SAVE_NOT_READ;

int get_lcd_power_save_mode()
{
    if (power_save_mode != POWER_SAVE_NOT_READ)
        return power_save_mode;
    const Setting setting(POWER_SAVE_KEY);
    const int mode = strcmp(setting.text(), "on") == 0 ? POWER_SAVE_ON : POWER_SAVE_OFF;
    /* A value that could not be read is read again the next time. */
    if (setting)
        power_save_mode = mode;
    return mode;
}

void toggle_lcd_power_save_mode()
{
    power_save_mode = power_save_mode == POWER_SAVE_ON ? POWER_SAVE_OFF : POWER_SAVE_ON;
    nvram_set(POWER_SAVE_KEY, power_save_mode == POWER_SAVE_ON ? "on" : "off");
    nvram_commit();
}
