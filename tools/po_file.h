/* Translation files: GNU gettext PO, read with its library. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class Problems;

struct PoEntry {
    std::string context;
    std::string id;    // the English text
    std::string text;  // its translation; empty: none
    bool fuzzy;        // the translation may not fit the English text any more
    std::string place; // where the entry stands
};

/* The entries of a file but its header and obsolete ones, in their order. Faults of the file are reported. */
std::vector<PoEntry> read_po_file(const std::filesystem::path &path, Problems &problems);
