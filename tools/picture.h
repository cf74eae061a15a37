/* One-bit pictures: text art, as people draw them, and bitmap files, as the panel reads them. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class Problems;

class Picture
{
public:
    Picture(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }

    /* Whether a pixel is drawn; column 0 is the left one, row 0 the top one. No pixel outside is. */
    bool at(int column, int row) const;

    /* Draws a pixel; one outside is dropped. */
    void set(int column, int row);

    /* The picture's columns from `first` on, `width` of them; blank where it has none. */
    Picture columns(int first, int width) const;

private:
    bool inside(int column, int row) const;
    std::size_t index(int column, int row) const;

    int width_;
    int height_;
    std::vector<uint8_t> ink_; // row by row, 1 where drawn
};

/* Reads text art: lines of '#' (drawn) and '.' (blank), all equally long, at most as large as the screen. Nothing, with
 * the fault reported, when it is not that. */
std::optional<Picture> read_text_art(const std::filesystem::path &file, Problems &problems);

/* The text art files (*.txt) of a folder, in the order of their names. Throws when it cannot be read. */
std::vector<std::filesystem::path> text_art_files(const std::filesystem::path &folder);

/* The bitmap file of a picture: width and height, two bytes each, then its rows in whole bytes, leftmost bit first. */
std::string bitmap_file(const Picture &picture);

/* The name under which the panel looks up the bitmap drawn in `file`. */
std::string bitmap_name(const std::filesystem::path &file);
