/* A terminal as a screen of cells: texts in styles, keys. One thread at a time may use it. */
#pragma once

#include "sim/terminal_guard.h"

#include <optional>
#include <string>
#include <string_view>

namespace sim {

struct Area {
    int y, x, height, width; // cells, from the upper left
};

enum class Style { PLAIN, QUIET, HEADING, MARKED, LIT, DARK };

enum class Key {
    UP, DOWN, LEFT, RIGHT, PAGE_UP, PAGE_DOWN, HOME, END,
    ENTER, ESCAPE, TAB, BACKSPACE, DELETE, INTERRUPT, STOP, CHARACTER, OTHER,
};

struct Stroke {
    Key key;
    std::string character; // of a CHARACTER, UTF-8
};

class Screen {
public:
    /* Takes over the `terminal`. Throws std::runtime_error. */
    explicit Screen(int terminal);
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    int lines() const;
    int columns() const;
    bool unicode() const { return unicode_; }

    /* Begins a new content; show() brings it to the terminal, or what of it is new there. */
    void begin() const;
    void show() const;

    /* `text` in `width` cells: cut or filled with blanks. */
    void put(int y, int x, int width, std::string_view text, Style style = Style::PLAIN) const;
    void put_cells(int y, int x, const std::wstring &cells, Style style) const;
    void put_frame(const Area &area, std::string_view title) const;

    /* A key that was pressed; nothing when there is none. */
    std::optional<Stroke> next_stroke() const;

    /* Takes the terminal's size again. */
    void resize() const;

    /* Clears a terminal that others have used, for the next show(). */
    void restore() const;

    /* Gives the terminal back and stops this program and its job until they are continued. */
    void stop() const;

private:
    std::wstring widened(std::string_view text, int width) const;

    const int terminal_;
    const bool unicode_;
    termios modes_;
    std::optional<TerminalGuard> guard_;
};

} // namespace sim
