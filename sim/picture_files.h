/* Pictures of the LCD as files: PNG, and GIF with what it showed one after the other. */
#pragma once

#include "sim/feed.h"

#include <span>
#include <string>

namespace sim {

enum class Look {
    PLAIN, // black on white, whatever the light
    LCD,   // as a person sees it: dots with gaps, green and lit, or dark
};

constexpr unsigned LARGEST_SCALE = 16;

/* A still picture, each pixel `scale` x `scale` (1..LARGEST_SCALE) of the file's. Throws std::runtime_error. */
std::string png_file(const Picture &picture, Look look, unsigned scale);

/* A picture and how long the LCD showed it. */
struct Still {
    Picture picture;
    unsigned hundredths; // of a second
};

/* `stills` one after the other, for ever. Throws std::runtime_error. */
std::string gif_file(std::span<const Still> stills, Look look, unsigned scale);

/* The stills between two ticks, of the pictures that were shown then; one that lasted long is cut. */
std::vector<Still> stills_between(const std::vector<Picture> &pictures, uint64_t from, uint64_t to);

} // namespace sim
