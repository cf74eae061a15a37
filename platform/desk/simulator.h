/* What the daemon tells the simulator that watches it: all that the router answers it and all that it does, one
 * datagram each, in the order in which they happen. Without a simulator nothing is told.
 *
 *   waits                 a pass is over: the next tick may come
 *   get KEY VALUE         a setting was read; `unset KEY`: there is none
 *   set KEY VALUE         a setting was written; `commit`: all were
 *   read PATH CONTENT     a file was opened; `exists PATH`, `missing PATH`: it was asked for; `removed PATH`
 *   runs COMMAND, ran     a command begins and ends
 *   captures COMMAND      one begins whose output is read, which follows: `output TEXT`
 *   gone PATH             the display driver is not there
 *
 * A frame is told as the message that the LCD driver gets. */
#pragma once

#include <cstddef>
#include <string_view>

/* Whether a simulator watches: PANEL_WATCHED is "yes" in the environment. */
bool is_watched();

/* Whether the file `path` was installed with the daemon. */
bool is_installed(const char *path);

/* Tells one message of `size` bytes. */
void tell_message(const void *message, size_t size);

/* Tells the words `kind`, `name` and `text`. */
void tell(std::string_view kind, std::string_view name = {}, std::string_view text = {});

/* Tells how the file `path`, opened for reading as `fd`, was found (-1: it was not); returns `fd`. */
int tell_file(const char *path, int fd);
