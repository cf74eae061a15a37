/* Walking UTF-8 texts of the Basic Multilingual Plane.
 *
 * A lead byte tells the length of its character; what follows is not checked. Texts may be malformed: no function looks
 * behind the NUL. A character cut off by the NUL is code point 0, and so is a lead byte that begins no character. */
#pragma once

#include <cstdint>
#include <span>

struct Utf8Char {
    char bytes[3];  // those beyond `length` are undefined
    uint8_t length; // 1..3
};

/* The next character; `p` itself at the end of the text. A lead byte that begins no character is reported on standard
 * output and is one byte long. */
const char *utf_8_str_forward_one(const char *p);

/* Number of characters in `s`. */
int utf_8_str_length(const char *s);

/* Character number `n` of `s`, the end of the text when it has fewer; `s` itself for n <= 0. */
const char *utf_8_str_forward(const char *s, int n);

/* Fills `record` with character number `index` of `s`, the NUL as a one-byte character at its end. Returns `record`. */
Utf8Char *utf_8_get_char(const char *s, int index, Utf8Char *record);

/* The character's code point. */
uint16_t utf_8_to_ucs2(const Utf8Char *record);

/* Copies the first `n` characters of `src` without a terminator, or all of it with one when it has fewer. Returns
 * `dst`, which must hold them. */
char *utf_8_str_copy(char *dst, const char *src, int n);

/* Copies `src` into `dst`, cut to fit on a character boundary and always terminated. `dst` is not empty. */
void copy_cut(std::span<char> dst, const char *src);

/* Cuts the text in `text` to at most `maxBytes` bytes, on a character boundary. */
void cut_text(char *text, int maxBytes);
