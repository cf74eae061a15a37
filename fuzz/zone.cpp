/* Zone codes, at any time of day and in any year. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "status/time_zone.h"

#include <climits>

static constexpr int MOST_MINUTES = 99 * 60 + 9 * 15;

void fuzz(Input &in)
{
    FuzzRouter router;
    router.clock = static_cast<time_t>(in.number(INT_MIN, INT_MAX)) * in.number(1, 4);
    const std::string zone = in.rest();
    router.settings["time_zone"] = zone;
    const int minutes = time_adjust(exact(zone).data());
    require(minutes >= -MOST_MINUTES && minutes <= MOST_MINUTES, "an offset has at most two digits of hours");
    require(minutes % 15 == 0, "an offset is a number of quarters");
    const int saving = daylight_saving();
    require(saving == 0 || (saving == 1 && zone.size() > 3), "daylight saving is in force or not");
}
