#include "gfx/format.h"

#include "gfx/utf8.h"

#include <cstdarg>
#include <cstdio>

void format_text(std::span<char> out, const char *format, ...)
{
    /* Room for more than `out` takes, so that its cut falls on a character that is still whole. */
    char whole[256];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(whole, sizeof whole, format, arguments);
    va_end(arguments);
    copy_cut(out, whole);
}
