/* Speed files and amounts of data, and the numbers that they are shown as. */
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "lang/language.h"
#include "status/traffic.h"

#include <cctype>
#include <cstring>

static constexpr uint32_t HIGHEST_SPEED = 1000000000;

static void check_number(const char *text, size_t most)
{
    require(isdigit(static_cast<unsigned char>(*text)), "a number begins with a digit");
    require(strlen(text) <= most, "a number has few characters");
}

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(LANGUAGE_EN);
    router.files["/tmp/lcd/network_status/speed/down"] = in.text();
    router.files["/tmp/lcd/network_status/speed/up"] = in.text();
    char text[32];
    for (const Direction direction : {DOWNLOAD, UPLOAD}) {
        const uint32_t speed = read_speed(direction);
        require(speed <= HIGHEST_SPEED && speed <= get_peak_speed(direction), "a speed is a possible one");
        format_speed(text, speed);
        check_number(text, 8);
        format_dial_value(text, speed);
        check_number(text, 7);
        format_dial_value_mega(text, speed);
        check_number(text, 7);
    }
    format_amount(text, exact(in.rest()).data());
    check_number(text, 8);
    require(strchr(text, 'B') == text + strlen(text) - 1, "an amount ends with its unit");
}
