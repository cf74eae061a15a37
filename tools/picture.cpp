#include "tools/picture.h"

#include "gfx/frame_buffer.h"
#include "tools/problems.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

Picture::Picture(int width, int height)
    : width_(width), height_(height), ink_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
{
}

bool Picture::inside(int column, int row) const
{
    return column >= 0 && column < width_ && row >= 0 && row < height_;
}

std::size_t Picture::index(int column, int row) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(column);
}

bool Picture::at(int column, int row) const
{
    return inside(column, row) && ink_[index(column, row)] != 0;
}

void Picture::set(int column, int row)
{
    if (inside(column, row))
        ink_[index(column, row)] = 1;
}

Picture Picture::columns(int first, int width) const
{
    Picture result(width, height_);
    for (int row = 0; row < height_; ++row) {
        for (int column = 0; column < width; ++column) {
            if (at(first + column, row))
                result.set(column, row);
        }
    }
    return result;
}

/* What is wrong with row number `row` of a drawing, or "". */
static std::string row_fault(const std::vector<std::string> &rows, std::size_t row)
{
    const std::string &line = rows[row];
    const std::size_t strange = line.find_first_not_of("#.");
    if (strange != std::string::npos)
        return "only '#' and '.' draw, not character number " + std::to_string(strange + 1);
    if (line.empty())
        return "the line is empty";
    if (line.size() != rows[0].size())
        return "a line of " + std::to_string(line.size()) + " pixels, the first has " + std::to_string(rows[0].size());
    if (line.size() > LCD_WIDTH || row >= LCD_HEIGHT)
        return "larger than the screen, " + std::to_string(LCD_WIDTH) + " x " + std::to_string(LCD_HEIGHT) + " pixels";
    return "";
}

static std::vector<std::string> read_lines(const fs::path &file)
{
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    if (!in.eof())
        throw std::system_error(errno, std::generic_category(), "cannot read " + file.string());
    return lines;
}

std::optional<Picture> read_text_art(const fs::path &file, Problems &problems)
{
    const std::vector<std::string> rows = read_lines(file);
    if (rows.empty()) {
        problems.error(place_of(file, 1), "the drawing is empty");
        return std::nullopt;
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const std::string fault = row_fault(rows, row);
        if (!fault.empty()) {
            problems.error(place_of(file, row + 1), fault);
            return std::nullopt;
        }
    }
    Picture picture(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()));
    for (int row = 0; row < picture.height(); ++row) {
        for (int column = 0; column < picture.width(); ++column) {
            if (rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] == '#')
                picture.set(column, row);
        }
    }
    return picture;
}

std::vector<fs::path> text_art_files(const fs::path &folder)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt")
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

std::string bitmap_file(const Picture &picture)
{
    std::string file;
    for (const int size : {picture.width(), picture.height()}) {
        file += static_cast<char>(size >> 8);
        file += static_cast<char>(size & 0xFF);
    }
    for (int row = 0; row < picture.height(); ++row) {
        for (int first = 0; first < picture.width(); first += 8) {
            int byte = 0;
            for (int bit = 0; bit < 8; ++bit)
                byte = byte << 1 | picture.at(first + bit, row);
            file += static_cast<char>(byte);
        }
    }
    return file;
}

std::string bitmap_name(const fs::path &file)
{
    std::string name = file.stem().string();
    for (char &c : name)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return name;
}
