/* Small text files, whole. */
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sim {

constexpr const char *UNFINISHED = ".new"; // ending of a file that write_file is still writing

/* All that `path` holds; nothing when it cannot be read. */
std::optional<std::string> read_file(const std::filesystem::path &path);

/* Puts a new file with `text` in the place of `path`: a reader gets the old text or the new one, never a part. Writers
 * of one path must take turns. Throws std::system_error. */
void write_file(const std::filesystem::path &path, std::string_view text);

/* Removes `path` if it is there. Throws std::system_error. */
void remove_file(const std::filesystem::path &path);

} // namespace sim
