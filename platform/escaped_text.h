/* Texts escaped for one line: \\ \" \n \r \t \f, \xHH for other bytes below 0x20 and 0x7f; bytes from 0x80 on stand for
 * themselves. Scenario scripts, traces and the desk's settings store are written this way. */
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <sys/types.h>

/* Writes `text` escaped and NUL-terminated to `out`. The length of the whole escaped text; when it is not less than
 * out.size(), it has been cut. */
size_t escape_text(std::span<char> out, std::string_view text);

/* Undoes the escapes of `text`, `length` bytes, in place (hexadecimal digits in either case). The new length, -1 when
 * an escape is unknown or incomplete. */
ssize_t unescape_text(char *text, size_t length);
