/* Starting a program. */
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace sim {

struct Command {
    std::vector<std::string> arguments;   // the first is the program's path
    std::vector<std::string> environment; // "NAME=VALUE"
    pid_t group = 0;                      // process group to join; 0: one of its own
    int output = -1;                      // descriptor for standard output and error; -1: those of this program
    bool own = true;                      // a part of the simulation, see spawn
};

/* Starts `command` with no other descriptors of this program's and no signal blocked; its process id. An own one is
 * killed when the calling thread ends, and ignores the tick and input signals until it handles them: they may come
 * before it is ready. Throws std::system_error when there is no room for a process; a program that cannot be run is a
 * child that ends with status 127. */
pid_t spawn(const Command &command);

/* This program's environment with `changes` ("NAME=VALUE") made to it. */
std::vector<std::string> environment_with(const std::vector<std::string> &changes);

} // namespace sim
