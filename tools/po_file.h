/* Translation files: GNU gettext PO, read with its library. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class Problems;

struct PoEntry {
    std::string context;
    std::string id;   // the English text
    std::string text; // its translation; empty: none
    bool fuzzy;       // the translation may not fit the English text any more
    std::string place; // where the entry stands
};

/* The entries of a file but its header and obsolete ones, in their order. Faults of the file are reported. */
std::vector<PoEntry> read_po_file(const std::filesystem::path &file, Problems &problems);

/* An entry's text as a language pack holds it: "(empty)" is the empty text, the arrows are the key glyphs 0x10 to 0x12. */
std::string panel_text(std::string text);
