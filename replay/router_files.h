/* What a script does to the files of the router. Paths are the router's; a path that is not absolute, has a ".."
 * component or leads out of the root over a link is refused. Each function but the first returns the reason when it
 * refuses or fails, else "". */
#pragma once

#include <string>

/* Makes `dir` the router's root folder, for the daemon and for the functions below. False with errno. */
bool open_router_root(const std::string &dir);

/* Makes `path` a file that holds `text`, and its folders. */
std::string write_router_file(const std::string &path, const std::string &text);

/* Removes a file, a link, or a folder with all that it holds; a missing one is no error. The root itself stays. */
std::string remove_router_path(const std::string &path);

/* Makes a folder and its parents; one that exists is no error. */
std::string make_router_folder(const std::string &path);
