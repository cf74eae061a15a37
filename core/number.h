/* Numbers in texts that other programs write. */
#pragma once

/* The decimal number at the start of `text` as atoi reads it, the nearest int when it does not fit; 0 without digits.
 */
int parse_int(const char *text);
