/* The watch over the two companion daemons that feed the panel with data. */
#pragma once

/* Lists the running processes and starts a missing companion again; each restart adds a line to the restart record. */
void check_daemons();
