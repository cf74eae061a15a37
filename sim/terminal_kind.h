/* What is known of this kind of terminal. */
#pragma once

#include <string>

namespace sim {

/* Throws std::runtime_error when standard input and output are no terminal that a screen can be made of. */
void check_terminal();

/* What, written to the terminal, ends its use as a screen. While a screen is in use. */
std::string farewell_sequence();

} // namespace sim
