/* What lies between the daemon's code and the C library: the linker leads the daemon's calls here (--wrap). While armed
 * they are counted, and a chosen one fails; what the daemon holds is counted always. Assets are read once and then
 * served from memory, so that millions of redraws are a matter of minutes. */
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

enum CallKind {
    CALL_OPEN,   // open, openat
    CALL_EXISTS, // access, faccessat
    CALL_READ,
    CALL_WRITE,
    CALL_UNLINK, // unlink, unlinkat
    CALL_RENAME,
    CALL_MKDIR,
    CALL_FSTAT,
    CALL_FLOCK,
    CALL_MEMORY, // malloc, calloc, realloc, strdup, strndup
    CALL_SOCKET,
    CALL_BIND,
    CALL_SEND, // send, sendto
    CALL_IOCTL,
    CALL_SYSTEM, // the fork behind it, or the shell
    CALL_POPEN,
    CALL_STREAM, // fdopen, fgets
    CALL_TIMER,  // setitimer
    CALL_POLL,
    CALL_SETTINGS, // nvram_get, nvram_safe_get, nvram_set, nvram_commit
    CALL_KINDS
};
extern const char *const call_names[CALL_KINDS];

using Picture = std::array<uint8_t, 1024>;

struct CallLayer {
    std::string root; // set: a real router's paths and commands lie below this folder, and its settings are a library's
    int root_fd = -1; // the same folder
    time_t clock = 0; // what time() says then
    bool assets_in_memory = true;
    bool armed = false;
    std::array<unsigned, CALL_KINDS> counts = {};
    CallKind kind = CALL_KINDS;        // of the call that fails
    unsigned nth = 0;                  // which of that kind, from 1 on
    int error = 0;                     // its errno
    std::function<void()> before_call; // set: called before each call while armed

    long allocations = 0;       // blocks that the daemon holds
    int asset_files = 0;        // and assets
    bool changed_files = false; // a file other than the display's lock has been made, changed or removed
    bool input_failed = false;  // the call that failed was to read a key or an event
    Picture picture = {};       // last sent
    unsigned pictures = 0;      // sent
};
extern CallLayer layer;

/* The lowest free descriptor: it rises when one leaks. */
int lowest_descriptor();

/* Reads the pictures and the glyphs of Latin letters now, for all copies of this process; layer.root_fd is the root. */
void preload_assets();

/* A new folder for a router root, in memory where there is such a place: a picture makes and removes a file. */
std::filesystem::path make_root_folder();
