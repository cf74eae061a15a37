/* Texts on their way in and out: values of any bytes are written escaped, as in scenario scripts. */
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sim {

/* The length of the UTF-8 character that `text` begins with; 0 when it begins with none. */
size_t character_length(std::string_view text);

/* `value` escaped (platform/escaped_text.h), bytes that are no UTF-8 as \xHH. */
std::string escaped(std::string_view value);

/* What the escaped `text` stands for; nothing when one of its escapes is none. */
std::optional<std::string> unescaped(std::string_view text);

} // namespace sim
