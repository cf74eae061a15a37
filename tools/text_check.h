/* Whether the texts of a pack can be drawn and fit where they stand. */
#pragma once

#include "tools/language_pack.h"

class GlyphWidths;

/* How a language is laid out. */
struct LanguageLayout {
    bool wide;            // the taller rows of Traditional Chinese, Japanese and Korean
    bool breaks_anywhere; // a line of a page breaks after any character
};

/* The layout of a language by its code, "en" to "kr". */
LanguageLayout language_layout(std::string_view code);

/* Reports each text that cannot be drawn or does not fit; one that scrolls is a warning. */
void check_texts(const PackTexts &texts, LanguageLayout layout, GlyphWidths &widths, Problems &problems);
