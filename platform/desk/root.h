/* The folder of the workstation that stands for the router's root. */
#pragma once

/* The root folder, open: the one that PANEL_ROOT names in the environment. The first use also leaves the root's own
 * program folders alone in PATH, for the daemon's commands; without a usable folder it ends the program, saying why on
 * standard error. */
int desk_root();

/* The absolute path of the root folder. Opens it as desk_root does. */
const char *desk_root_path();

/* A router path relative to the root folder, for the *at functions ("tmp/lcd/lcd_action"). */
const char *desk_relative(const char *router_path);
