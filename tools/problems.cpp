#include "tools/problems.h"

#include <ostream>

std::string place_of(const std::string &file, std::size_t line)
{
    return file + ':' + std::to_string(line);
}

void Problems::error(const std::string &place, const std::string &reason)
{
    out_ << place << ": " << reason << '\n';
    failed_ = true;
}

void Problems::warning(const std::string &place, const std::string &reason)
{
    out_ << place << ": warning: " << reason << '\n';
}
