/* The file that names the operation under way, shown as a title. */
#include "core/actions.h"
#include "core/display.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "lang/language.h"

#include <cstring>

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    const int ticks = in.number(0, 4);
    router.files["/tmp/lcd/lcd_info"] = in.rest();
    set_lcd_event_id(EVENT_INFO);
    switch_screen("router event");
    for (int i = 0; i < ticks; i++) {
        lcd_tick_handler(0);
        current_screen->handler(nullptr, ACTION_TICK);
    }
    require(strcmp(current_screen->name, "router event") == 0, "no key was pressed");
    require(!router.files.contains(LCD_LOCK_FILE), "no lock is left");
}
