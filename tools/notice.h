/* The notice that ships with the glyphs: the licences of the fonts that they were taken from. */
#pragma once

#include <filesystem>
#include <set>
#include <string>

class Problems;

/* The text of the notice, from the packages' documents below `documents`; those missing are reported. */
std::string notice_text(const std::set<std::string> &packages, const std::filesystem::path &documents,
                        Problems &problems);
