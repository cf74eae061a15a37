/* The glyphs of the three fonts. */
#pragma once

struct Utf8Char;

enum Font {
    FONT_TEXT = 1,
    FONT_LARGE = 2, // digits alone, as those of the dials
    FONT_HUGE = 3,  // those of the clock
};

constexpr int GLYPH_NAME_BYTES = 16;

/* The name under which loadBitmap finds a character's glyph in `font`, written to `nameBuffer` (GLYPH_NAME_BYTES).
 * Returns `nameBuffer`. */
char *getGlyphName(const Utf8Char *character, int font, char *nameBuffer);

/* Loads the glyph of `character` and tells its height and width, the letter spacing of `font` (a Font) and the extra
 * pixels between its lines, all in pixels. */
void getFontInfo(const Utf8Char *character, int font, int *height, int *width, int *spacing, int *lineGap);

/* 1 for a character that takes no letter spacing and after which a line may break: punctuation and the key glyphs. */
int isBreakCharacter(const Utf8Char *character);
