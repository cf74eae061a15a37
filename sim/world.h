/* A world: a file of inputs and the values that they begin with, one a line: "link.wan off". Blank lines and lines that
 * begin with # say nothing. */
#pragma once

#include "sim/inputs.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sim {

class Router;

struct WorldLine {
    std::string id;
    std::string value;
};

/* Reads the ready world `name`, else the file of that name. Throws std::runtime_error that tells file, line and reason
 * of each fault. */
std::vector<WorldLine> read_world(const std::string &name);

/* The names of the ready worlds, in order. */
std::vector<std::string> ready_worlds();

/* Puts a router that runs in `world`: what that does not name gets its initial value, but the pace of the clock and the
 * time of day; other settings stay. */
void change_world(Router &router, const std::vector<WorldLine> &world);

/* Gives a router that does not run yet the values of `world`, its flash too. */
void enter_world(Router &router, const std::vector<WorldLine> &world);

} // namespace sim
