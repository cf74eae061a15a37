/* The attached computers: their names from the DHCP leases, and the rows that list them. */
#pragma once

#include "gfx/rowed_info.h"

#include <cstddef>

constexpr int MAX_COMPUTERS = 253;

enum ComputerKind { COMPUTER_SPEED, COMPUTER_USAGE };

/* The rows last built, ended by an empty one. */
extern InfoRow computer_rows[MAX_COMPUTERS + 1];

/* Fills computer_rows from the companion daemon's files; a missing file gives no rows. */
void build_computer_rows(ComputerKind kind);

/* The host name that the DHCP server knows for the computer whose address ends in `host` (1..254), written to `buffer`
 * of `size` bytes. Null when there is none. */
char *lookup_lease_name(int host, char *buffer, size_t size);

/* Whether a name has at least one character and all of them are ASCII. */
bool is_plain_ascii(const char *name);
