/* What is wrong with the inputs of a tool, told to the person who wrote them. */
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

/* "FILE:LINE", the place that a problem is reported at. */
std::string place_of(const std::string &file, std::size_t line);

/* Prints each problem at once, as "PLACE: reason", and remembers whether one was an error. */
class Problems
{
public:
    explicit Problems(std::ostream &out) : out_(out) {}

    void error(const std::string &place, const std::string &reason);
    void warning(const std::string &place, const std::string &reason);
    bool failed() const { return failed_; }

private:
    std::ostream &out_;
    bool failed_ = false;
};
