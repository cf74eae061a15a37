/* Whether the texts of a pack can be drawn and fit where they stand. */
#pragma once

#include "tools/language_pack.h"

#include <filesystem>

class TrialPanel;

/* Reports each text with a character that has no glyph in the folder `bitmaps`. */
void check_characters(const PackTexts &texts, const std::filesystem::path &bitmaps, Problems &problems);

/* Reports each text that does not fit its room; one that scrolls is a warning. */
void check_rooms(const PackTexts &texts, const TrialPanel &panel, Problems &problems);
