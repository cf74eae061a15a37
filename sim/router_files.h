/* What the simulator and the router's programs share below the router's root: who writes is named first. */
#pragma once

namespace sim {

constexpr const char *ROOT_VARIABLE = "PANEL_ROOT"; // environment: the root folder, absolute

constexpr const char *CLOCK_FILE = "run/clock";         // simulator: "TICKS SECONDS\n", at every tick
constexpr const char *LINKS_FILE = "run/links";         // simulator: a line "NAME VALUE" for each status file
constexpr const char *TRAFFIC_FILE = "run/traffic";     // simulator: a line "NAME NUMBER" for each speed file
constexpr const char *REGISTER_FILE = "run/register";   // simulator: what the switch register reads, "0x00bf0000\n"
constexpr const char *CONTROL_SOCKET = "run/control";   // programs: one datagram a message (sim/control.h)
constexpr const char *DISPLAY_SOCKET = "run/lcd";       // daemon: one datagram a frame, as the LCD driver gets it

constexpr const char *STATUS_FOLDER = "tmp/lcd/network_status"; // network_status: one file a link
constexpr const char *SPEED_FOLDER = "tmp/lcd/network_status/speed"; // pc_monitor: one file a figure

} // namespace sim
