/* What the panel in a terminal looks like. */
#pragma once

#include "sim/feed.h"
#include "sim/terminal_menu.h"
#include "sim/terminal_screen.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace sim {

/* A text that is being typed for a row of the menu. */
struct Typing {
    MenuRow row;
    std::string text;
};

struct TerminalView {
    News news;
    uint64_t seconds = 0;        // of router time
    std::string speed;           // value of its input
    std::string address;         // of the page; "": there is none
    std::deque<std::string> log; // the last lines
    std::vector<MenuRow> rows;
    size_t selected = 0; // row
    bool in_menu = false;
    bool help = false;
    std::optional<Typing> typing;
    std::string message; // instead of the status line
};

void draw(const Screen &screen, const TerminalView &view);

} // namespace sim
