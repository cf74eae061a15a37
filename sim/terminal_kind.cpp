#include "sim/terminal_kind.h"

#include <stdexcept>
#include <unistd.h>

/* With names like "lines" as macros: for no other file. */
#include <curses.h>
#include <term.h>

namespace sim {

void check_terminal()
{
    if (!isatty(STDIN_FILENO) || !isatty(STDOUT_FILENO))
        throw std::runtime_error("--terminal: standard input and output are no terminal");
    int error = 0;
    if (setupterm(nullptr, STDOUT_FILENO, &error) != OK)
        throw std::runtime_error("--terminal: the terminal's kind, TERM, is not set or not known here");
    if (!tigetstr("cup"))
        throw std::runtime_error("--terminal: this terminal cannot put a text where it is wanted");
    del_curterm(cur_term);
}

std::string farewell_sequence()
{
    static std::string text;
    text.clear();
    for (const char *name : {"sgr0", "op", "cnorm", "rmkx", "rmcup"})
        if (const char *sequence = tigetstr(name))
            tputs(sequence, 1, [](int c) {
                text += static_cast<char>(c);
                return c;
            });
    return text;
}

} // namespace sim
