#include "sim/json.h"

#include "sim/text.h"

#include <cstdio>

namespace sim {

static constexpr const char *REPLACEMENT = "\xef\xbf\xbd"; // U+FFFD

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
