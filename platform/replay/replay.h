/* The replay platform: a router that a script moves, and that writes down what the daemon does on standard output. */
#pragma once

#include <cstdint>
#include <ctime>
#include <map>
#include <string>

struct ReplayInterface {
    std::string address, netmask, hardware_address; // "10.0.0.2", "255.255.255.0", "00:1f:33:8a:5f:2a"
    int mtu;
};

/* Everything that a script can set. */
struct ReplayRouter {
    time_t clock = 1700000000;                   // wall clock, UTC; moves only here
    std::map<std::string, std::string> settings; // the settings store
    std::map<std::string, std::string> outputs;  // what a captured command yields; not named: nothing
    std::map<std::string, bool> failing;         // commands whose capture fails to start
    std::map<std::string, ReplayInterface> interfaces;
    bool display_socket_fails = false, display_bind_fails = false; // the display driver is gone
    bool trace = true;                                             // write records
    uint32_t (*ticks)() = nullptr;                                 // the tick count of the records; null: 0
    uint8_t frame[1024] = {}; // the last frame as the driver got it: 0 is a drawn pixel
    unsigned frame_count = 0; // frames received
};
extern ReplayRouter replay;

/* Makes `dir` the router's root folder. False with errno when it cannot be opened. */
bool replay_open_root(const std::string &dir);

/* The descriptor of the root folder, for the *at functions. */
int replay_root();

/* A router path relative to the root ("tmp/lcd/lcd_action"). */
const char *replay_relative(const char *router_path);

/* Writes one record: "@T KIND REST". */
void replay_record(const char *kind, const char *rest);
