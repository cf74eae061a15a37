/* The way of a finished picture to the LCD driver. */
#pragma once

#include <cstdint>

constexpr int LCD_FRAME_BYTES = 1024;                    // payload of a message: one picture
constexpr uint16_t LCD_MSG_TYPE = 18;                    // message type that the driver knows
constexpr const char *LCD_LOCK_FILE = "/tmp/lcd/lcd_wp"; // exists while somebody writes a frame

/* Inverts the whole picture (the driver takes 0 for a drawn pixel) and sends it. The result of write_lcd_data. */
int showScreen();

/* Sends the 1024 bytes at `frame` to the driver under the lock file. 0, or -1 after saying why on standard output. */
int write_lcd_data(const uint8_t *frame);
