#include "replay/script.h"

#include "platform/escaped_text.h"

#include <charconv>

static constexpr std::string_view BLANKS = " \t";

/* Takes the quoted word that begins at `at` and moves `at` behind it. The reason when it is malformed, else "". */
static std::string take_quoted(std::string_view line, size_t &at, std::string &word)
{
    const size_t begin = ++at;
    while (at < line.size() && line[at] != '"')
        at += line[at] == '\\' ? 2 : 1;
    if (at >= line.size())
        return "a quoted word has no end";
    word = line.substr(begin, at - begin);
    at++;
    if (at < line.size() && BLANKS.find(line[at]) == std::string_view::npos)
        return "no blank behind a quoted word";
    const ssize_t length = unescape_text(word.data(), word.size());
    if (length < 0)
        return "an escape is unknown or incomplete";
    word.resize(static_cast<size_t>(length));
    return "";
}

ScriptLine split_line(std::string_view line)
{
    ScriptLine split;
    size_t at = line.find_first_not_of(BLANKS);
    if (at < line.size() && line[at] == '#')
        return split;
    for (; at < line.size(); at = line.find_first_not_of(BLANKS, at)) {
        std::string &word = split.words.emplace_back();
        if (line[at] == '"') {
            split.error = take_quoted(line, at, word);
            if (!split.error.empty())
                return split;
        } else {
            const size_t end = std::min(line.find_first_of(BLANKS, at), line.size());
            word = line.substr(at, end - at);
            at = end;
        }
    }
    return split;
}

std::optional<uint64_t> parse_number(std::string_view word, uint64_t most)
{
    uint64_t number = 0;
    const char *end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || rest != end || number > most)
        return std::nullopt;
    return number;
}
