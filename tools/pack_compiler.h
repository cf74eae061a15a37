/* The compiler of language packs. */
#pragma once

#include <filesystem>
#include <optional>
#include <string>

class Problems;

/* The pack of a translation, or the English one of the template alone where `translation` is empty. The language is
 * that of the file's name, "de.po"; the glyphs that texts are measured with are in `bitmaps`. Every fault is reported;
 * the pack is then nothing. */
std::optional<std::string> compile_pack(const std::filesystem::path &original, const std::filesystem::path &translation,
                                        const std::filesystem::path &bitmaps, Problems &problems);
