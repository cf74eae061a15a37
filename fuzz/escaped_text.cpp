/* Escaped texts and the words of script lines. */
#include "platform/escaped_text.h"

#include "fuzz/fuzz.h"
#include "platform/replay/quote_text.h"
#include "replay/script.h"

#include <algorithm>

static void check_way_back(const std::string &text)
{
    std::string escaped(escape_text({}, text), '\0');
    require(escape_text({escaped.data(), escaped.size() + 1}, text) == escaped.size(), "a text has one length");
    require(escaped.find_first_of("\n\r\t\f\x7F") == escaped.npos, "an escaped text is one line");
    std::vector<char> back(escaped.begin(), escaped.end());
    const ssize_t length = unescape_text(back.data(), back.size());
    require(length >= 0 && std::string(back.data(), static_cast<size_t>(length)) == text, "an escaped text comes back");
    const ScriptLine line = split_line("word " + quote_text(text));
    require(line.error.empty() && line.words.size() == 2 && line.words[1] == text, "a quoted text comes back");
}

void fuzz(Input &in)
{
    const size_t room = static_cast<size_t>(in.number(1, 64));
    const std::string text = in.rest();
    check_way_back(text);
    std::vector<char> cut(room);
    escape_text(cut, text);
    require(cut[std::min(room - 1, escape_text({}, text))] == '\0', "a cut text ends");

    std::vector<char> escaped(text.begin(), text.end());
    require(unescape_text(escaped.data(), escaped.size()) <= static_cast<ssize_t>(text.size()), "escapes only shrink");
    const ScriptLine line = split_line(text);
    for (const std::string &word : line.words)
        require(word.size() <= text.size(), "a word is a part of its line");
    const auto number = parse_number(text, 1000);
    require(!number || *number <= 1000, "a number is within its limit");
}
