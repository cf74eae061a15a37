/* The daemon's life: what happens once before the loop, one pass of the loop, and the sleep between two passes. */
#pragma once

/* Installs the signal handlers, starts the tick and enters the first screen. */
void panel_start();

/* One pass: a change of language, then a key or event, else a tick for the screen and the minute's daemon check. */
void panel_pass();

/* Sleeps until a signal arrives, 100 ms at most. A key or language signal that came since the last pass ends it at
 * once. */
void panel_wait();
