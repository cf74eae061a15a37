#include "platform/escaped_text.h"

#include <algorithm>
#include <charconv>

struct NamedEscape {
    char letter, byte;
};
static constexpr NamedEscape NAMED_ESCAPES[] = {{'\\', '\\'}, {'"', '"'},  {'n', '\n'},
                                                {'r', '\r'},  {'t', '\t'}, {'f', '\f'}};
static constexpr size_t HEX_ESCAPE_LENGTH = 3; // behind the backslash: "x" and two digits

static const NamedEscape *find_escape(char NamedEscape::*field, char wanted)
{
    const NamedEscape *found = std::ranges::find(NAMED_ESCAPES, wanted, field);
    return found == std::end(NAMED_ESCAPES) ? nullptr : found;
}

size_t escape_text(std::span<char> out, std::string_view text)
{
    size_t length = 0;
    const auto put = [&](char c) {
        if (length + 1 < out.size())
            out[length] = c;
        length++;
    };
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (const NamedEscape *named = find_escape(&NamedEscape::byte, c)) {
            put('\\');
            put(named->letter);
        } else if (byte < 0x20 || byte == 0x7f) {
            put('\\');
            put('x');
            put("0123456789abcdef"[byte >> 4]);
            put("0123456789abcdef"[byte & 0xf]);
        } else {
            put(c);
        }
    }
    if (!out.empty())
        out[std::min(length, out.size() - 1)] = '\0';
    return length;
}

/* Reads what stands behind a backslash into `*byte`. The bytes it takes up, 0 when it is no escape. */
static size_t read_escape(std::string_view rest, char *byte)
{
    if (rest.empty())
        return 0;
    if (const NamedEscape *named = find_escape(&NamedEscape::letter, rest[0])) {
        *byte = named->byte;
        return 1;
    }
    if (rest[0] != 'x' || rest.size() < HEX_ESCAPE_LENGTH)
        return 0;
    unsigned value = 0;
    const char *end = rest.data() + HEX_ESCAPE_LENGTH;
    if (std::from_chars(rest.data() + 1, end, value, 16).ptr != end)
        return 0;
    *byte = static_cast<char>(value);
    return HEX_ESCAPE_LENGTH;
}

ssize_t unescape_text(char *text, size_t length)
{
    const char *in = text;
    const char *const end = text + length;
    char *out = text;
    while (in < end) {
        if (*in != '\\') {
            *out++ = *in++;
            continue;
        }
        const size_t used = read_escape({in + 1, end}, out++);
        if (used == 0)
            return -1;
        in += 1 + used;
    }
    return out - text;
}
