#include "sim/inputs.h"
#include "sim/text.h"

#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <ctime>
#include <sstream>

namespace sim {

static constexpr time_t TIME_END = INT32_MAX; // a router's time_t may have no more

std::vector<std::pair<std::string, std::string>> choices(const Input &input)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    std::istringstream words{std::string(input.range)};
    for (std::string word; words >> word;) {
        const size_t equals = word.find('=');
        pairs.emplace_back(word.substr(0, equals), equals == std::string::npos ? word : word.substr(equals + 1));
    }
    return pairs;
}

std::pair<unsigned long, unsigned long> limits(const Input &input)
{
    const size_t dots = input.range.find("..");
    const std::string least(input.range.substr(0, dots));
    if (dots == std::string_view::npos)
        return {0, std::stoul(least)};
    return {std::stoul(least), std::stoul(std::string(input.range.substr(dots + 2)))};
}

static std::string fault_of_choice(const Input &input, std::string_view value)
{
    std::string words;
    for (const auto &[word, stored] : choices(input)) {
        if (word == value)
            return "";
        words += (words.empty() ? "" : ", ") + word;
    }
    return "takes one of " + words;
}

static std::string fault_of_number(const Input &input, std::string_view value)
{
    const auto [least, most] = limits(input);
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error == std::errc() && end == value.data() + value.size() && number >= least && number <= most)
        return "";
    return "takes a number from " + std::to_string(least) + " to " + std::to_string(most);
}

static std::string fault_of_text(const Input &input, std::string_view value)
{
    const auto text = unescaped(value);
    if (!text || text->find('\0') != std::string::npos)
        return "takes the escapes \\\\ \\\" \\n \\r \\t \\f \\xHH, and no NUL";
    const unsigned long most = limits(input).second;
    return text->size() <= most ? "" : "takes at most " + std::to_string(most) + " bytes";
}

static std::string fault_of_address(std::string_view value)
{
    in_addr address;
    const bool plain = value.find_first_not_of("0123456789.") == std::string_view::npos;
    if (plain && inet_pton(AF_INET, std::string(value).c_str(), &address) == 1)
        return "";
    return "takes an address like 203.0.113.25";
}

std::string fault_of(const Input &input, std::string_view value)
{
    switch (input.kind) {
    case Kind::CHOICE:
        return fault_of_choice(input, value);
    case Kind::NUMBER:
        return fault_of_number(input, value);
    case Kind::TEXT:
        return fault_of_text(input, value);
    case Kind::ADDRESS:
        return fault_of_address(value);
    case Kind::TIME:
        return parse_time(value) ? "" : "takes a time like 2024-03-10T12:30:00, from 1970 to 2037";
    case Kind::ACTION:
        return value.empty() ? "" : "takes no value";
    }
    return "";
}

std::optional<time_t> parse_time(std::string_view text)
{
    static constexpr const char *FORMAT = "%Y-%m-%dT%H:%M:%S";
    static constexpr size_t WITHOUT_SECONDS = std::string_view("2024-03-10T12:30").size();
    const std::string time = std::string(text) + (text.size() == WITHOUT_SECONDS ? ":00" : "");
    tm parts = {};
    strptime(time.c_str(), FORMAT, &parts);
    const time_t seconds = timegm(&parts);
    if (seconds < 0 || seconds > TIME_END)
        return std::nullopt;
    /* A month of one digit, or a day that its month has not, comes back in another form. */
    return format_time(seconds) == time ? std::optional(seconds) : std::nullopt;
}

std::string format_time(time_t seconds)
{
    tm parts;
    char text[sizeof "2024-03-10T12:30:00"];
    gmtime_r(&seconds, &parts);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
    return text;
}

} // namespace sim
