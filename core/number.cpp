#include "core/number.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

int parse_int(const char *text)
{
    return static_cast<int>(std::clamp<long long>(strtoll(text, nullptr, 10), INT_MIN, INT_MAX));
}
