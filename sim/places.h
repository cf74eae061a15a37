/* The places that inputs go to, and the way there and back. */
#pragma once

#include "sim/feed.h"
#include "sim/inputs.h"

namespace sim {

class Router;

/* What values are read from. */
struct View {
    Router &router;
    const Settings &settings; // the running ones
};

struct Place {
    const char *name; // for people, before the target: "settings key"
    std::string (*get)(const View &view, const Input &input); // null: there is no value
    void (*set)(Router &router, const Input &input, const std::string &value);
};

extern const Place setting_place;    // a key of the settings store
extern const Place language_place;   // the same, and the daemon is told of it
extern const Place status_place;     // a status file, through the companion network_status
extern const Place line_place;       // a file of one line; "" removes it
extern const Place marker_place;     // a file that is there or not
extern const Place interface_place;  // the address of a network interface
extern const Place parameter_place;  // the simulation itself
extern const Place speed_place;      // the pace of the clock
extern const Place ticks_place;      // so many ticks at once
extern const Place wall_clock_place; // the router's time of day
extern const Place key_place;        // a key of the panel
extern const Place event_place;      // an event of the router's
extern const Place kill_place;       // a program of the router's is killed
extern const Place reboot_place;
extern const Place upgrade_place; // the firmware replaces itself
extern const Place picture_fault_place, pack_fault_place, lock_fault_place;

/* The values of all inputs now, and the settings. */
State read_state(Router &router);

/* Gives `input` a `value` that has no fault (sim/inputs.h). Throws std::system_error. */
void set_input(Router &router, const Input &input, std::string_view value);

/* The settings that the list gives a router, by their keys. */
Settings default_settings();

} // namespace sim
