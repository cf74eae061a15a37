/* Plays scenario scripts against the daemon's own code. */
#pragma once

#include "replay/commands.h"

#include <iosfwd>
#include <string>

/* Plays `script`, called `name` in messages, on the router whose root open_router_root has made. Records go to standard
 * output, with one for each line that begins when `lines` is set; failed expectations and what stopped the play to
 * standard error. The worst that a line came to. */
PlayResult play_script(std::istream &script, const std::string &name, bool lines);
