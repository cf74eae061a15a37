#include "status/time_zone.h"

#include "tests/support/test_root.h"

#include <chrono>
#include <optional>
#include <sstream>

using namespace std::chrono;

TEST(TimeZone, AdjustsByTheZonesOffset)
{
    const std::pair<const char *, int> cases[] = {
        {"", 0},           {"GMT+", 0},       {"GMT+9:2:1", 570}, {"GMT-3:2", -210},
        {"GMT+0:2:1", 0},  {"GMT+10:3", 645}, {"GMT-11:1", -675}, {"GMT+12:3", 720},
        {"GMT 5:1", -315}, {"GMT+x:2", 30},   {"GMT+10:x", 600},
    };
    for (const auto &[code, minutes] : cases)
        EXPECT_EQ(time_adjust(code), minutes) << code;
}

/* The first such weekday from a day of the month on; without a weekday, that day itself. */
struct Date {
    month in;
    unsigned from;
    std::optional<weekday> on;
};

static sys_days in_year(const Date &date, int y)
{
    const sys_days from = year(y) / date.in / day(date.from);
    return date.on ? from + (*date.on - weekday(from)) : from;
}

struct Summer {
    const char *zones;
    Date first, last;
};

static const Summer summers[] = {
    {"-7:0:2 -6:0:3", {April, 1, Sunday}, {October, 25, Sunday}},
    {"-9:0 -9:0:1 -8:0 -8:0:7 -3:2 -3:2:1 -7:0:3 -6:0:2 -5:0:2 -4:0:1", {March, 8, Sunday}, {November, 1, Sunday}},
    {"-3:0:1", {November, 1, Sunday}, {February, 15, Sunday}},
    {"-3:0:3 -2:0 -2:0:1 -1:0:1 +0:0:2 +1:0:1 +1:0:2 +1:0:3 +1:0:4 +2:0:1 +2:0:2 +2:0:5 +3:0:3 +4:0:2 +5:0:1 +6:0:1 "
     "+7:0:2 +8:0:2 +9:0:3 +10:0:5",
     {March, 25, Sunday},
     {October, 25, Sunday}},
    {"+2:0:3", {April, 24, Friday}, {September, 24, Thursday}},
    {"+2:0:6", {March, 24, Friday}, {September, 10, Sunday}},
    {"+3:0:1", {April, 1, {}}, {October, 1, {}}},
    {"+9:2:1 +10:0:2", {October, 25, Sunday}, {March, 25, Sunday}},
    {"+10:0:4", {October, 1, Sunday}, {March, 25, Sunday}},
    {"+12:0:1", {October, 1, Sunday}, {March, 15, Sunday}},
};

/* The days of 2008 to 2037 on which daylight_saving is not what `summer` tells, in the zone that is set. */
static int wrong_days(const Summer &summer)
{
    int wrong = 0;
    for (int y = 2008; y <= 2037; y++) {
        const sys_days first = in_year(summer.first, y);
        sys_days last = in_year(summer.last, y);
        if (summer.last.in == February && y == 2032)
            last += weeks(1); // the one year in which that summer ends on the fourth Sunday
        for (sys_days today = year(y) / January / 1; today < year(y + 1) / January / 1; today += days(1)) {
            const bool expected = first < last ? first <= today && today <= last : today >= first || today <= last;
            const auto second = sys_seconds(today) + seconds(today == last ? 86399 : 0);
            replay.clock = static_cast<time_t>(second.time_since_epoch().count());
            wrong += daylight_saving() != expected;
        }
    }
    return wrong;
}

TEST(TimeZone, SavesDaylightByTheCalendar)
{
    const TestRoot root;
    for (const Summer &summer : summers) {
        std::istringstream zones(summer.zones);
        for (std::string zone; zones >> zone;) {
            replay.settings["time_zone"] = "GMT" + zone;
            EXPECT_EQ(wrong_days(summer), 0) << zone;
        }
    }
}

TEST(TimeZone, FindsTheRuleOfAZone)
{
    /* On 20 March 2024, when "-9:0" is the only zone of these with daylight saving. */
    const std::pair<const char *, int> cases[] = {
        {"G", 0},       {"GMT-", 0},          {"GMT-9:0", 1},       {"-9:0+11:0:1", 0},
        {"GMT-9:1", 0}, {"GMT-9:0-7:0:2", 0}, {"GMT+3:0:1-9:0", 1},
    };
    const TestRoot root;
    replay.clock = static_cast<time_t>(sys_seconds(sys_days(2024y / March / 20)).time_since_epoch().count());
    EXPECT_EQ(daylight_saving(), 0) << "no zone set";
    for (const auto &[zone, saving] : cases) {
        replay.settings["time_zone"] = zone;
        EXPECT_EQ(daylight_saving(), saving) << zone;
    }
}
