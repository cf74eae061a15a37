#include "gfx/utf8.h"

#include <cstdio>
#include <cstring>

/* Length of the character that begins with `lead`, 0 when none begins so. */
static int lead_length(char lead)
{
    const auto byte = static_cast<uint8_t>(lead);
    if (!(byte & 0x80))
        return 1;
    if (!(byte & 0x20))
        return 2;
    return byte & 0x10 ? 0 : 3;
}

/* Bytes of the character at `p`, less than its lead byte tells when the text ends in it. */
static size_t step_bytes(const char *p)
{
    const int length = lead_length(*p);
    return length > 1 ? strnlen(p, static_cast<size_t>(length)) : 1;
}

/* Bytes of the longest run of whole characters from `s` that takes no more than `limit`. */
static size_t prefix_bytes(const char *s, size_t limit)
{
    size_t bytes = 0;
    while (s[bytes] != '\0') {
        const size_t step = step_bytes(s + bytes);
        if (step > limit - bytes)
            break;
        bytes += step;
    }
    return bytes;
}

const char *utf_8_str_forward_one(const char *p)
{
    if (*p == '\0')
        return p;
    if (lead_length(*p) == 0)
        printf("utf_8_str_forward_one, none UCS2 character found in string %s\n", p);
    return p + step_bytes(p);
}

int utf_8_str_length(const char *s)
{
    int length = 0;
    for (; *s != '\0'; s = utf_8_str_forward_one(s))
        length++;
    return length;
}

const char *utf_8_str_forward(const char *s, int n)
{
    for (; n > 0 && *s != '\0'; n--)
        s = utf_8_str_forward_one(s);
    return s;
}

Utf8Char *utf_8_get_char(const char *s, int index, Utf8Char *record)
{
    const char *p = utf_8_str_forward(s, index);
    const size_t bytes = step_bytes(p);
    *record = {{'\0', '\0', '\0'}, 1}; // what stands for a character cut off by the end of the text
    if (bytes >= static_cast<size_t>(lead_length(*p))) {
        memcpy(record->bytes, p, bytes);
        record->length = static_cast<uint8_t>(bytes);
    }
    return record;
}

uint16_t utf_8_to_ucs2(const Utf8Char *record)
{
    const char lead = record->bytes[0];
    const auto tail = [record](int i) { return record->bytes[i] & 0x3F; };
    switch (lead_length(lead)) {
    case 1:
        return static_cast<uint16_t>(lead);
    case 2:
        return static_cast<uint16_t>((lead & 0x1F) << 6 | tail(1));
    case 3:
        return static_cast<uint16_t>((lead & 0x0F) << 12 | tail(1) << 6 | tail(2));
    default:
        return 0;
    }
}

char *utf_8_str_copy(char *dst, const char *src, int n)
{
    const char *end = src;
    for (; n > 0 && *end != '\0'; n--)
        end = utf_8_str_forward_one(end);
    const size_t terminator = n > 0 ? 1 : 0;
    memcpy(dst, src, static_cast<size_t>(end - src) + terminator);
    return dst;
}

void copy_cut(std::span<char> dst, const char *src)
{
    const size_t bytes = prefix_bytes(src, dst.size() - 1);
    memcpy(dst.data(), src, bytes);
    dst[bytes] = '\0';
}

void cut_text(char *text, int maxBytes)
{
    text[prefix_bytes(text, maxBytes > 0 ? static_cast<size_t>(maxBytes) : 0)] = '\0';
}
