/* What a bench measures and how it says so: one figure a line, with its limit where it has one. */
#pragma once

#include <string>
#include <vector>

/* Prints a figure that has no limit. */
void print_figure(const std::string &what, double value, const char *unit);

/* Prints a figure beside the most that it may be. */
void print_figure(const std::string &what, double value, const char *unit, double limit);

/* The exit status of a bench: 1 when a printed figure has broken its limit, else 0. */
int figures_status();

/* The processor time that this process has taken, in seconds. */
double processor_time();

/* The value below which the share `part` (0..1) of the values lies; `values` is not empty. */
double quantile(std::vector<double> values, double part);

inline double median(const std::vector<double> &values)
{
    return quantile(values, 0.5);
}
