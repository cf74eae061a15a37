/* The setting that lets the display go dark, read once and cached. */
#pragma once

/* 0 when power saving is on, 1 when it is off. nvram is read at the first call only. */
int get_lcd_power_save_mode();

/* Switches the setting over, in nvram (committed) and cache together. */
void toggle_lcd_power_save_mode();
