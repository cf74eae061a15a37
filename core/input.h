/* Keys and router events: two signals that raise a flag, and the files that say what has happened. */
#pragma once

#include <csignal>

extern volatile sig_atomic_t input_pending;    // 1 after SIGUSR1, until the loop has looked
extern volatile sig_atomic_t language_pending; // 1 after SIGUSR2, until the loop has looked

/* The action that read_lcd_input recognised last; ACTION_NONE at start. */
extern int lcd_action;

void lcd_input_handler(int signal_number);    // SIGUSR1: a word has been written for the daemon
void lcd_language_handler(int signal_number); // SIGUSR2: the display language may have changed

/* Reads the announced key or event. 1 when it is known: it is in lcd_action, an event's id in get_lcd_event_id.
 * 0 when the files are missing, empty or hold other words; nothing changes then. */
int read_lcd_input();
