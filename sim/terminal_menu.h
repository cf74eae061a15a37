/* The router's inputs as rows of a menu. */
#pragma once

#include "sim/feed.h"
#include "sim/inputs.h"

#include <string>
#include <vector>

namespace sim {

enum class RowKind { INPUT, NEW_SETTING, WORLD };

struct MenuRow {
    RowKind kind;
    std::string group;
    std::string id; // of an input or a world
    std::string label;
    std::string value; // as `state` has it; what the row takes where it has none
};

/* All inputs but the panel's keys, the settings store, the ready worlds: group by group. */
std::vector<MenuRow> menu_rows(const State &state);

/* The value of a choice or a number that is `steps` away from `value`; `value` itself of any other `input`. Beyond the
 * last choice is the first again if it `wraps`. */
std::string stepped(const Input &input, const std::string &value, int steps, bool wraps);

} // namespace sim
