/* Texts put together for the screen. */
#pragma once

#include <span>

/* Prints into `out` as snprintf does, cut on a character boundary where it does not fit. `out` has 1 to 250 bytes. */
[[gnu::format(printf, 2, 3)]] void format_text(std::span<char> out, const char *format, ...);
