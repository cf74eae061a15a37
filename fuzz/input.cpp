/* The files of keys and events, and what the current screen makes of them. */
#include "core/input.h"

#include "core/actions.h"
#include "core/screen_table.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"

void fuzz(Input &in)
{
    FuzzRouter router;
    lcd_action = ACTION_NONE;
    set_lcd_event_id(EVENT_NONE);
    router.files["/tmp/lcd/lcd_event"] = in.text();
    router.files["/tmp/lcd/lcd_action"] = in.rest();
    const int known = read_lcd_input();
    require(known == (lcd_action != ACTION_NONE), "an action is taken over when it is known");
    require(!known || (lcd_action >= ACTION_UP && lcd_action <= ACTION_EVENT), "a known action has a code");
    require((get_lcd_event_id() != EVENT_NONE) == (lcd_action == ACTION_EVENT), "an event has an id");
    require(get_lcd_event_id() >= 0 && get_lcd_event_id() <= EVENT_NONE, "an id is one of the table");
}
