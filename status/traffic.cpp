#include "status/traffic.h"

#include "core/file.h"
#include "core/number.h"
#include "gfx/format.h"
#include "lang/language.h"
#include "lang/text_id.h"

#include <algorithm>
#include <cstring>
#include <string_view>

static constexpr uint32_t K = 1u << 10, M = 1u << 20, G = 1u << 30;

/* From here on a unit is full when rounded: 1000 of it show as 1.000 of the next. */
static constexpr uint32_t FULL_K = 1000 * K;
static constexpr uint32_t FULL_M = 1000 * M;

static constexpr uint32_t HIGHEST_SPEED = 1000000000; // anything above is a glitch of the measurement

/* Indexed by Direction. */
static const char *const speed_files[DIRECTION_COUNT] = {
    "/tmp/lcd/network_status/speed/down",
    "/tmp/lcd/network_status/speed/up",
};

/* Speeds accepted since the daemon started. */
static uint32_t last_speed[DIRECTION_COUNT];
static uint32_t peak_speed[DIRECTION_COUNT];

uint32_t read_speed(Direction direction)
{
    uint32_t reading = last_speed[direction];
    char line[100];
    if (read_first_line(speed_files[direction], line))
        reading = static_cast<uint32_t>(std::max(parse_int(line), 0));
    if (reading > HIGHEST_SPEED)
        reading = last_speed[direction];
    last_speed[direction] = reading;
    peak_speed[direction] = std::max(peak_speed[direction], reading);
    return reading;
}

uint32_t get_peak_speed(Direction direction)
{
    return peak_speed[direction];
}

bool is_mega(uint32_t speed)
{
    return speed >= FULL_K;
}

/* `value` in mega units with three decimals, from FULL_K on. */
static void format_mega(std::span<char> out, uint32_t value)
{
    if (value < M)
        format_text(out, "1.000");
    else
        format_text(out, "%u.%03u", value / M, value % M * 1000 / M);
}

void format_dial_value(std::span<char> out, uint32_t speed)
{
    if (is_mega(speed))
        format_mega(out, speed);
    else
        format_text(out, "%u", speed == 0 ? 0 : std::max(speed / K, 1u));
}

void format_dial_value_mega(std::span<char> out, uint32_t speed)
{
    if (is_mega(speed))
        format_mega(out, speed);
    else if (speed == 0)
        format_text(out, "0");
    else
        format_text(out, "0.%03u", std::max(speed * 1000 / M, 1u));
}

void format_speed(std::span<char> out, uint32_t speed)
{
    char number[32];
    format_dial_value(number, speed);
    format_text(out, "%s%s", number, ml_str(is_mega(speed) ? TEXT_UNIT_MEGA : TEXT_UNIT_KILO));
}

/* A decimal number of any length divided by a small one that it reaches. */
struct Division {
    char quotient[8]; // the first decimal digits, without leading zeros
    uint32_t remainder;
};

static Division divide(std::string_view digits, uint32_t divisor)
{
    Division result = {};
    uint64_t remainder = 0;
    size_t length = 0;
    for (const char digit : digits) {
        remainder = remainder * 10 + static_cast<uint64_t>(digit - '0');
        const char next = static_cast<char>('0' + remainder / divisor);
        remainder %= divisor;
        if ((length > 0 || next != '0') && length + 1 < sizeof result.quotient)
            result.quotient[length++] = next;
    }
    result.remainder = static_cast<uint32_t>(remainder);
    return result;
}

/* The value of `digits`, G for anything above. */
static uint32_t up_to_giga(std::string_view digits)
{
    uint64_t value = 0;
    for (const char digit : digits)
        value = std::min<uint64_t>(value * 10 + static_cast<uint64_t>(digit - '0'), G);
    return static_cast<uint32_t>(value);
}

/* The digits at the start of `amount`. */
static std::string_view leading_digits(const char *amount)
{
    return {amount, strspn(amount, "0123456789")};
}

/* The amount in units of `divisor` with decimals, six characters of it. */
static void format_large_amount(std::span<char> out, std::string_view digits, uint32_t divisor, const char *unit)
{
    const Division whole = divide(digits, divisor);
    const unsigned fraction = static_cast<unsigned>(uint64_t{whole.remainder} * 1000 / divisor);
    char number[16];
    format_text(number, "%s.%03u", whole.quotient, fraction);
    format_text(out, "%.6s%sB", number, unit);
}

void format_amount(std::span<char> out, const char *amount)
{
    const std::string_view digits = leading_digits(amount);
    const uint32_t value = up_to_giga(digits);
    if (value >= G)
        format_large_amount(out, digits, G, ml_str(TEXT_UNIT_GIGA));
    else if (value >= FULL_M)
        format_text(out, "1.000%sB", ml_str(TEXT_UNIT_GIGA));
    else if (value >= M)
        format_large_amount(out, digits, M, ml_str(TEXT_UNIT_MEGA));
    else if (value >= FULL_K)
        format_text(out, "1.000%sB", ml_str(TEXT_UNIT_MEGA));
    else
        format_text(out, "%u%sB", digits.empty() ? 0 : std::max(value / K, 1u), ml_str(TEXT_UNIT_KILO));
}
