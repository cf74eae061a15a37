/* A frame as a person sees it on the panel. `frame` holds its 1024 bytes as the display driver got them. */
#pragma once

#include <cstdint>
#include <string>

/* Whether the pixel is drawn: x 0..127 from the left, y 0..63 from the bottom. */
bool is_lit(const uint8_t *frame, int x, int y);

/* The picture as 64 lines of 128 characters, "#" where a pixel is drawn and "." elsewhere. */
std::string text_art(const uint8_t *frame);

/* Writes the picture to the file `path` of this machine: a PNG, black on white, each pixel 4 x 4. The reason when it
 * cannot be written, else "". */
std::string write_png(const uint8_t *frame, const std::string &path);
