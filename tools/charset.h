/* Texts in other character sets, by the C library's converters. */
#pragma once

#include <cstddef>
#include <iconv.h>
#include <optional>
#include <string>
#include <string_view>

/* Turns bytes of one character set into bytes of another. */
class Converter
{
public:
    /* Throws when the C library does not know one of them. */
    Converter(const char *to, const char *from);
    ~Converter() { iconv_close(handle_); }
    Converter(const Converter &) = delete;
    Converter &operator=(const Converter &) = delete;

    /* Nothing for bytes that are malformed or have no equivalent. */
    std::optional<std::string> convert(std::string_view bytes);

private:
    iconv_t handle_;
};

/* The code points of a text; nothing when it is not UTF-8. */
std::optional<std::u32string> decode_utf8(std::string_view text);

/* The UTF-8 of a text. */
std::string encode_utf8(std::u32string_view text);

/* A character as messages name it: its code point and, where it can be seen, itself. */
std::string character_name(char32_t c);
