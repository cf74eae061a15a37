/* Language packs: the 150 texts of a language in one file. */
#pragma once

#include "lang/language.h"
#include "tools/po_file.h"

#include <array>
#include <string>
#include <vector>

class Problems;

struct PackText {
    std::string text;  // as the panel shows it
    std::string place; // where its author wrote it
};

using PackTexts = std::array<PackText, TEXT_COUNT>;

/* The texts of the template itself, which are English. Every entry that is missing, doubled or unknown is reported. */
PackTexts english_texts(const std::string &file, const std::vector<PoEntry> &entries, Problems &problems);

/* The texts of a translation. Reported is also every entry that is untranslated, fuzzy or not as in the template. */
PackTexts translated_texts(const std::string &file, const std::vector<PoEntry> &entries,
                           const std::vector<PoEntry> &english, Problems &problems);

/* The pack as the panel loads it: a byte-order mark, then each text with a NUL. A pack too large is reported. */
std::string pack_file(const std::string &file, const PackTexts &texts, Problems &problems);
