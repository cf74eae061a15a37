/* The compiler of glyphs. */
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class Problems;

struct GlyphJob {
    std::string set;                // one of GLYPH_SETS
    std::vector<std::string> texts; // PO files: all that is written in them gets glyphs
    std::filesystem::path own;      // folder of the glyphs drawn by hand
    std::filesystem::path fonts;    // folder of the bitmap fonts
    bool with_chinese;              // whether to use the font under the GPL
    std::filesystem::path output;   // folder of the glyph files
    std::filesystem::path notice;   // the fonts' licences; empty: none is written
};

/* Replaces the job's output and tells what each set takes on flash, a line each. Every fault is reported; nothing is
 * then replaced, and the answer is empty. Throws std::invalid_argument for an unknown set. */
std::string compile_glyphs(const GlyphJob &job, Problems &problems);
