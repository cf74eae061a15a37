#include "tools/charset.h"

#include <array>
#include <cstdio>
#include <stdexcept>

Converter::Converter(const char *to, const char *from) : handle_(iconv_open(to, from))
{
    if (handle_ == reinterpret_cast<iconv_t>(-1))
        throw std::runtime_error(std::string("the C library does not convert from ") + from + " to " + to);
}

std::optional<std::string> Converter::convert(std::string_view bytes)
{
    std::string result(bytes.size() * 4, '\0'); // no character set in use here needs more
    std::string input(bytes);
    char *in = input.data();
    char *out = result.data();
    std::size_t left = input.size();
    std::size_t room = result.size();
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &in, &left, &out, &room) != 0)
        return std::nullopt;
    result.resize(result.size() - room);
    return result;
}

std::optional<std::u32string> decode_utf8(std::string_view text)
{
    const std::optional<std::string> bytes = Converter("UTF-32BE", "UTF-8").convert(text);
    if (!bytes)
        return std::nullopt;
    std::u32string result;
    for (std::size_t i = 0; i < bytes->size(); i += 4) {
        char32_t c = 0;
        for (std::size_t k = 0; k < 4; ++k)
            c = c << 8 | static_cast<unsigned char>((*bytes)[i + k]);
        result += c;
    }
    return result;
}

std::string encode_utf8(std::u32string_view text)
{
    std::string bytes;
    for (const char32_t c : text) {
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(c >> shift & 0xFF);
    }
    return Converter("UTF-8", "UTF-32BE").convert(bytes).value_or("");
}

std::string character_name(char32_t c)
{
    std::array<char, 16> name;
    std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(c));
    std::string result = name.data();
    if (c > U' ')
        result += ' ' + encode_utf8({&c, 1});
    return result;
}
