/* A router in memory, the platform of the targets that fuzz the daemon: what an input puts into it is there without one
 * system call.
 *
 * Every character but those whose code point ends in the digit F has a glyph, made up from its code point; fonts 1 to 3
 * are 12, 20 and 30 pixels high. Each language has a pack, whose texts are "0", "1", "2" ... */
#pragma once

#include <array>
#include <ctime>
#include <map>
#include <string>

using Texts = std::map<std::string, std::string, std::less<>>;

/* The router that the daemon finds while it lives; at its end every descriptor must have been closed. */
struct FuzzRouter {
    FuzzRouter();
    ~FuzzRouter();

    Texts files;                             // by path
    Texts settings;                          // the settings store
    std::string output;                      // of each captured command, NULs included
    std::array<unsigned char, 16> address{}; // what queries about an interface yield
    int failing_queries = 0;                 // bit n: query number n fails
    time_t clock = 1700000000;
};

/* Makes the language `id` current. */
void use_language(int id);
