#include "gfx/glyph.h"

#include "gfx/bitmap.h"
#include "gfx/utf8.h"
#include "lang/language.h"

#include <charconv>
#include <cstring>

constexpr int FONT_COUNT = 3;
constexpr int LETTER_SPACING[FONT_COUNT] = {1, 2, 3}; // by Font - 1
constexpr int WIDE_LINE_GAP = 4;

/* Space, punctuation, and the key glyphs 0x12, 0x11 and 0x10 */
constexpr char breakCharacters[] = {' ',  ',', '.', ':', '-', '\x12', '\x11', '\x10', '/',
                                    '\'', '_', '&', '!', ';', '[',    ']',    '`',    '|'};

char *getGlyphName(const Utf8Char *character, int font, char *nameBuffer)
{
    const unsigned codePoint = utf_8_to_ucs2(character);
    char *end = nameBuffer;
    *end++ = 'U';
    *end++ = '_';
    for (int shift = 12; shift >= 0; shift -= 4)
        *end++ = "0123456789abcdef"[codePoint >> shift & 0xF];
    if (font != FONT_TEXT) {
        *end++ = '_';
        end = std::to_chars(end, nameBuffer + GLYPH_NAME_BYTES - 1, static_cast<unsigned>(font)).ptr;
    }
    *end = '\0';
    return nameBuffer;
}

void getFontInfo(const Utf8Char *character, int font, int *height, int *width, int *spacing, int *lineGap)
{
    char name[GLYPH_NAME_BYTES];
    const LoadedBitmap glyph(getGlyphName(character, font, name));
    *height = glyph.height();
    *width = glyph.width();
    *spacing = LETTER_SPACING[font - 1];
    *lineGap = font == FONT_TEXT && is_wide_language() ? WIDE_LINE_GAP : 0;
}

int isBreakCharacter(const Utf8Char *character)
{
    return character->length == 1 && memchr(breakCharacters, character->bytes[0], sizeof breakCharacters);
}
