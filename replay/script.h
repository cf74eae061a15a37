/* Scenario scripts: one line is one command. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct ScriptLine {
    std::vector<std::string> words; // none: a blank line or a comment
    std::string error;              // why the line cannot be read; "" when it can
};

/* Splits a line at its blanks. A word in double quotes may hold blanks and escapes; a comment's first non-blank is "#".
 * Any bytes are taken. */
ScriptLine split_line(std::string_view line);

/* `word` as a decimal number from 0 to `most`; nothing when it is anything else. */
std::optional<uint64_t> parse_number(std::string_view word, uint64_t most);
