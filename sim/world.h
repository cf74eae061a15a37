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

/* Gives a router that does not run yet the values of `world`, its flash too. */
void enter_world(Router &router, const std::vector<WorldLine> &world);

} // namespace sim
