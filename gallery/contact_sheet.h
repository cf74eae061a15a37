/* Many pictures on one sheet. */
#pragma once

#include "gallery/pictures.h"

#include <string>
#include <vector>

constexpr int SHEET_COLUMNS = 8;
constexpr int SHEET_SCALE = 2;                            // sheet pixels a panel pixel
constexpr int SHEET_GAP = 6;                              // between two pictures
constexpr int CELL_WIDTH = 128 * SHEET_SCALE + SHEET_GAP; // from one picture to the next
constexpr int CELL_HEIGHT = 64 * SHEET_SCALE + SHEET_GAP;

/* Writes the pictures row by row to a PNG; an empty one leaves its place free. Throws std::runtime_error when it cannot
 * be written. */
void write_contact_sheet(const std::vector<Picture> &pictures, const std::string &path);
