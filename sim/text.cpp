#include "sim/text.h"

#include "platform/escaped_text.h"

#include <cstdio>

namespace sim {

size_t character_length(std::string_view text)
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
        return text.empty() ? 0 : 1;
    if (first >= 0xc2 && first <= 0xdf)
        return follow(1);
    /* Neither longer than need be nor a surrogate nor beyond U+10FFFF. */
    if (first >= 0xe0 && first <= 0xef)
        return (first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ? 0 : follow(2);
    if (first >= 0xf0 && first <= 0xf4)
        return (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f) ? 0 : follow(3);
    return 0;
}

std::string escaped(std::string_view value)
{
    std::string text(escape_text({}, value), '\0');
    escape_text({text.data(), text.size() + 1}, value);
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        const size_t length = character_length(rest);
        char escape[8];
        if (length > 0)
            result += rest.substr(0, length);
        else
            result.append(escape, static_cast<size_t>(std::snprintf(escape, sizeof escape, "\\x%02x",
                                                                    static_cast<unsigned char>(rest[0]))));
        rest.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string value(text);
    const ssize_t length = unescape_text(value.data(), value.size());
    if (length < 0)
        return std::nullopt;
    value.resize(static_cast<size_t>(length));
    return value;
}

} // namespace sim
