#include "bench/figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

/* Whether a figure has broken its limit. */
static bool broken;

static std::string number(double value)
{
    char text[32];
    snprintf(text, sizeof text, "%.*f", value < 100 && value != std::floor(value) ? 2 : 0, value);
    return text;
}

/* bench/idle prints its lines in the same columns. */
static void print_line(const std::string &what, double value, const char *unit, const std::string &verdict)
{
    printf("%-66s %8s %-6s %s\n", what.c_str(), number(value).c_str(), unit, verdict.c_str());
    fflush(stdout);
}

void print_figure(const std::string &what, double value, const char *unit)
{
    print_line(what, value, unit, "");
}

void print_figure(const std::string &what, double value, const char *unit, double limit)
{
    const bool kept = value <= limit;
    broken = broken || !kept;
    print_line(what, value, unit, "limit " + number(limit) + (kept ? "" : "  BROKEN"));
}

int figures_status()
{
    return broken ? 1 : 0;
}

double processor_time()
{
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double quantile(std::vector<double> values, double part)
{
    const auto index = std::lround(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + index, values.end());
    return values[static_cast<size_t>(index)];
}
