/* The daemon's shell commands, moved below the folder that stands for the router's root. */
#pragma once

#include <span>

/* Writes `command` to `out` with `root`, quoted for the shell, before each word that begins with "/": programs,
 * arguments and targets of redirections, quoted or not, all but "/dev/null". The rest stays as it is; backslashes mean
 * nothing. False with errno E2BIG when it does not fit. */
bool root_command(std::span<char> out, const char *root, const char *command);
