#include "sim/json.h"

#include <cstdio>

namespace sim {

static constexpr const char *REPLACEMENT = "\xef\xbf\xbd"; // U+FFFD

/* The length of the UTF-8 character that `text` begins with; 0 when it begins with none. */
static size_t character_length(std::string_view text)
{
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const auto follow = [&](size_t count) {
        for (size_t i = 1; i <= count; ++i)
            if ((byte(i) & 0xc0) != 0x80)
                return size_t{0};
        return count + 1;
    };
    const unsigned first = byte(0), second = byte(1);
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first <= 0xdf)
        return follow(1);
    /* Neither longer than need be nor a surrogate nor beyond U+10FFFF. */
    if (first >= 0xe0 && first <= 0xef)
        return (first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ? 0 : follow(2);
    if (first >= 0xf0 && first <= 0xf4)
        return (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f) ? 0 : follow(3);
    return 0;
}

std::string json_string(std::string_view text)
{
    std::string json = "\"";
    while (!text.empty()) {
        const size_t length = character_length(text);
        const unsigned char c = static_cast<unsigned char>(text[0]);
        char escape[8];
        if (length == 0)
            json += REPLACEMENT;
        else if (c == '"' || c == '\\')
            json += {'\\', text[0]};
        else if (c < 0x20)
            json.append(escape, static_cast<size_t>(std::snprintf(escape, sizeof escape, "\\u%04x", c)));
        else
            json += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + "\"";
}

} // namespace sim
