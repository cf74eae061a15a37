/* What keeps this program's terminal whole: its output goes elsewhere meanwhile, and the terminal is set right however
 * the program ends. */
#pragma once

#include "sim/fd.h"

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <termios.h>

namespace sim {

/* While it lives, standard output and error go to a file or, without one, nowhere. What was written on standard error
 * meanwhile and went nowhere is told at its end. */
class OutputElsewhere {
public:
    /* Throws std::system_error when `file` cannot be written; "": none. */
    explicit OutputElsewhere(const std::filesystem::path &file);
    ~OutputElsewhere();
    OutputElsewhere(const OutputElsewhere &) = delete;
    OutputElsewhere &operator=(const OutputElsewhere &) = delete;

    /* Where standard output went before. */
    int terminal() const { return output_.get(); }

private:
    const Fd output_, error_;
    Fd complaints_;
};

/* A process that outlives this one and then sets the terminal right, unless its owner has ended in order. */
class TerminalGuard {
public:
    /* Gives `terminal` the `modes` and writes `farewell` to it. */
    TerminalGuard(int terminal, const termios &modes, const std::string &farewell);
    ~TerminalGuard();
    TerminalGuard(const TerminalGuard &) = delete;
    TerminalGuard &operator=(const TerminalGuard &) = delete;

private:
    pid_t process_;
    Fd alive_; // a pipe's end, closed when this program ends
};

} // namespace sim
