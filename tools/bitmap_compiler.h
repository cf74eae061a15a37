/* The compiler of pictures. */
#pragma once

#include <span>
#include <string>

class Problems;

/* Replaces the folder `output` by one with the bitmap file of each text art file (*.txt) in `folders`. Every fault is
 * reported; nothing is then replaced. */
void compile_bitmaps(std::span<const std::string> folders, const std::string &output, Problems &problems);
