/* What the simulator and the router's programs share below the router's root: who writes is named first. */
#pragma once

namespace sim {

constexpr const char *ROOT_VARIABLE = "PANEL_ROOT"; // environment: the root folder, absolute

constexpr const char *CLOCK_FILE = "run/clock";             // simulator: "TICKS SECONDS\n", at every tick
constexpr const char *STATUS_SOURCE = "run/network_status"; // simulator: folder of what network_status finds
constexpr const char *SPEED_SOURCE = "run/pc_monitor";      // simulator: folder of what pc_monitor measures
constexpr const char *REGISTER_FILE = "run/register";       // simulator: what the switch register reads
constexpr const char *CHANNEL_FILE = "run/channel";         // simulator: the channel that the radio is on
constexpr const char *NO_DRIVER_FILE = "run/no-driver";   // simulator: the display driver is gone
constexpr const char *SPOILT_FOLDER = "run/spoilt";         // simulator: what stands for installed files
constexpr const char *CONTROL_SOCKET = "run/control";     // all: one datagram a message (sim/control.h)

constexpr const char *ASSETS_FOLDER = "sbin/lcd_ml";                 // the daemon's pictures and packs
constexpr const char *STATUS_FOLDER = "tmp/lcd/network_status";      // network_status: one file a link
constexpr const char *SPEED_FOLDER = "tmp/lcd/network_status/speed"; // pc_monitor: one file a figure
constexpr const char *LEASES_FILE = "var/udhcpd.leases";             // simulator: the DHCP server's leases
constexpr const char *PAIRING_FILE = "proc/wsc_pbc";                 // daemon: the start of a WPS pairing

} // namespace sim
