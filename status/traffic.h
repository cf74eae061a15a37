/* The router's traffic: current and highest speeds, and the forms in which numbers of it are shown.
 *
 * K = 1,024, M = 1,048,576, G = 1,073,741,824. Buffers of 32 bytes hold every number; longer unit words are cut. */
#pragma once

#include <cstdint>
#include <span>

enum Direction { DOWNLOAD, UPLOAD, DIRECTION_COUNT };

/* The current speed of a direction. Without a file, or with an impossible number in it, the last accepted one. */
uint32_t read_speed(Direction direction);

/* The highest speed accepted since the daemon started. */
uint32_t get_peak_speed(Direction direction);

/* Whether a speed is shown in mega units. */
bool is_mega(uint32_t speed);

/* A computer's speed with its unit: "1.500M", "999k". */
void format_speed(std::span<char> out, uint32_t speed);

/* A computer's amount of data, a decimal text of any length, with its unit: "1.500GB". Exact. */
void format_amount(std::span<char> out, const char *amount);

/* The number of a dial, without unit. */
void format_dial_value(std::span<char> out, uint32_t speed);

/* The same in mega units however small the speed: "0.286". */
void format_dial_value_mega(std::span<char> out, uint32_t speed);
