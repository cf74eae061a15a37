/* The platform of the benches: the router's, its paths moved below a folder and its frames sent to a local socket that
 * the bench empties. Commands and network interfaces there are none, and every setting is missing. */
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/* What the daemon asked of the platform. */
struct RouterCall {
    enum Kind { OPEN, EXISTS, REMOVE, DISPLAY_SOCKET, DISPLAY_BIND, DISPLAY_SEND } kind;
    std::string path = {}; // relative to the root
    int flags = 0;         // of OPEN
};

/* Makes `dir` the root folder and opens the display's end of the frames. Ends the program when it cannot. */
void bench_open_root(const std::filesystem::path &dir);

/* Takes the frames that have been sent; to be called before ten of them wait. */
void bench_take_frames();

/* What `code` asks of the platform, in order. */
std::vector<RouterCall> recorded_calls(const std::function<void()> &code);

/* Makes the system calls behind `calls` with nothing around them: the file of each OPEN is read once and closed, unless
 * it is written, and each socket is closed behind its DISPLAY_SEND. */
void make_bare_calls(const std::vector<RouterCall> &calls);
