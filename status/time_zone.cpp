#include "status/time_zone.h"

#include "platform/nvram.h"
#include "platform/router.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

/* A zone code: three characters that say nothing, a sign, one or two digits of hours, ":", quarters of an hour, ":" and
 * a digit that tells apart zones of one offset. */
static constexpr size_t SIGN_PLACE = 3;
static constexpr int QUARTER_MINUTES = 15;

enum Period { WITHIN_YEAR, ACROSS_YEAR_END };

/* A day of the year that falls on a certain weekday: leap - remainder + c, where the remainder counts the weekday. */
struct DayFormula {
    int a, b, c;
};

struct Rule {
    DayFormula start, end;
    Period period;
};

/* The rule of 1 April to 1 October has fixed days, counted without a leap day; all others follow a weekday. */
static constexpr int FIXED_DAYS_RULE = 7;
static constexpr int FIXED_START = 91, FIXED_END = 274;

/* Indexed by rule number; 0 is unused. */
static const Rule rules[] = {
    {},
    {{2000, 2002, 97}, {1996, 1999, 304}, WITHIN_YEAR},     // first Sunday of April - last of October
    {{1996, 1999, 73}, {1996, 1999, 311}, WITHIN_YEAR},     // second Sunday of March - first of November
    {{2004, 2004, 311}, {1996, 1999, 52}, ACROSS_YEAR_END}, // first Sunday of November - third of February
    {{2000, 2002, 90}, {1996, 1999, 304}, WITHIN_YEAR},     // last Sunday of March - last of October
    {{2004, 2004, 120}, {2004, 2004, 273}, WITHIN_YEAR},    // last Friday of April - last Thursday of September
    {{2004, 2007, 89}, {2004, 2007, 259}, WITHIN_YEAR},     // Friday of 24-30 March - Sunday of 10-16 September
    {{}, {}, WITHIN_YEAR},                                  // 1 April - 1 October
    {{1996, 1999, 304}, {2000, 2002, 90}, ACROSS_YEAR_END}, // last Sunday of October - last of March
    {{2000, 2001, 280}, {2000, 2002, 90}, ACROSS_YEAR_END}, // first Sunday of October - last of March
    {{2000, 2001, 280}, {1996, 1999, 80}, ACROSS_YEAR_END}, // first Sunday of October - third of March
};

struct ZoneRule {
    const char *code;
    int rule;
};

/* The first code that a zone contains decides: the order matters. */
static const ZoneRule zone_rules[] = {
    {"-7:0:2", 1}, {"-6:0:3", 1}, {"-9:0", 2},   {"-8:0", 2},    {"-3:2", 2},    {"-7:0:3", 2},
    {"-6:0:2", 2}, {"-5:0:2", 2}, {"-4:0:1", 2}, {"-3:0:1", 3},  {"-3:0:3", 4},  {"-2:0", 4},
    {"-1:0:1", 4}, {"+0:0:2", 4}, {"+1:0:1", 4}, {"+1:0:2", 4},  {"+1:0:3", 4},  {"+1:0:4", 4},
    {"+2:0:1", 4}, {"+2:0:2", 4}, {"+2:0:5", 4}, {"+3:0:3", 4},  {"+4:0:2", 4},  {"+5:0:1", 4},
    {"+6:0:1", 4}, {"+7:0:2", 4}, {"+8:0:2", 4}, {"+9:0:3", 4},  {"+10:0:5", 4}, {"+2:0:3", 5},
    {"+2:0:6", 6}, {"+3:0:1", 7}, {"+9:2:1", 8}, {"+10:0:2", 8}, {"+10:0:4", 9}, {"+12:0:1", 10},
};

static int digit(char c)
{
    return isdigit(static_cast<unsigned char>(c)) ? c - '0' : 0;
}

int time_adjust(const char *zone_code)
{
    char code[8] = {};
    memcpy(code, zone_code, strnlen(zone_code, sizeof code));
    if (code[4] == '0')
        return 0;
    int minutes;
    if (!isdigit(static_cast<unsigned char>(code[5])))
        minutes = digit(code[4]) * 60 + digit(code[6]) * QUARTER_MINUTES;
    else
        minutes = (digit(code[4]) * 10 + digit(code[5])) * 60 + (code[5] == '2' ? 0 : digit(code[7]) * QUARTER_MINUTES);
    return code[SIGN_PLACE] == '+' ? minutes : -minutes;
}

static int day_of_year(const DayFormula &formula, int year, int leap)
{
    const int quotient = (year - formula.a) / 4;
    const int remainder = (year + quotient - formula.b) % 7;
    return leap - remainder + formula.c;
}

static bool in_force(int rule, int year, int leap, int today)
{
    int start = FIXED_START + leap, end = FIXED_END + leap;
    if (rule != FIXED_DAYS_RULE) {
        start = day_of_year(rules[rule].start, year, leap);
        end = day_of_year(rules[rule].end, year, leap);
    }
    if (rules[rule].period == WITHIN_YEAR)
        return start <= today && today <= end;
    return today >= start || today <= end;
}

static bool is_daylight_saving(const char *zone)
{
    if (strlen(zone) <= SIGN_PLACE)
        return false;
    tm local = {};
    router_local_time(router_time(), &local);
    for (const ZoneRule &row : zone_rules)
        if (strstr(zone + SIGN_PLACE, row.code))
            return in_force(row.rule, local.tm_year + 1900, local.tm_year % 4 == 0, local.tm_yday + 1);
    return false;
}

int daylight_saving()
{
    char *zone = nvram_get("time_zone");
    const bool saving = zone && is_daylight_saving(zone);
    free(zone);
    return saving;
}
