#include "gfx/text.h"

#include "gfx/bitmap.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/utf8.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>

constexpr size_t SCROLL_COPY_BYTES = 300;
constexpr int END_HOLDS = 3; // calls for which the end of a scrolling text is held

struct Metrics {
    int height;
    int width;
    int spacing; // between two characters
    int lineGap;
};

/* The metrics of `character`; its glyph is loaded for them. */
static Metrics measure(int font, const Utf8Char &character)
{
    Metrics metrics;
    getFontInfo(&character, font, &metrics.height, &metrics.width, &metrics.spacing, &metrics.lineGap);
    return metrics;
}

static Utf8Char firstCharacter(const char *s)
{
    Utf8Char character;
    return *utf_8_get_char(s, 0, &character);
}

struct Extent {
    int64_t width;
    int characters;
};

/* Measures `s` from its start: at most `maxChars` characters, none that reaches beyond `maxWidth`. */
static Extent measureText(int font, const char *s, int maxChars, int64_t maxWidth)
{
    Extent extent = {};
    if (*s == '\0')
        return extent;
    const int spacing = measure(font, firstCharacter(s)).spacing;
    bool spaced = false; // the character before takes letter spacing
    for (; extent.characters < maxChars && *s != '\0'; s = utf_8_str_forward_one(s)) {
        const Utf8Char character = firstCharacter(s);
        const bool spaces = !isBreakCharacter(&character);
        const int advance = measure(font, character).width + (spaced && spaces ? spacing : 0);
        if (extent.width + advance > maxWidth)
            break;
        extent.width += advance;
        extent.characters++;
        spaced = spaces;
    }
    return extent;
}

int getStringWidth(int font, const char *s, int maxChars)
{
    if (!s) {
        printf("getStringWidth return, no string\n");
        return 0;
    }
    const Extent extent = measureText(font, s, maxChars == 0 ? INT_MAX : maxChars, INT64_MAX);
    return static_cast<int>(std::min<int64_t>(extent.width, INT_MAX));
}

int countFittingCharacters(int font, const char *s, int maxWidth)
{
    return measureText(font, s, INT_MAX, maxWidth).characters;
}

void drawCharacter(int x, int y, int font, int mode, const Utf8Char *character)
{
    if (!isOnScreen(x, y, 1, 1)) {
        printf("drawCharacter return\n");
        return;
    }
    char name[GLYPH_NAME_BYTES];
    const LoadedBitmap glyph(getGlyphName(character, font, name));
    if (!isOnScreen(x, y, glyph.height(), glyph.width())) {
        printf("drawCharacter return\n");
        return;
    }
    if (mode == DRAW_REVERSE) {
        drawRectangle(x, y, glyph.height(), glyph.width());
        glyph.draw(DRAW_REVERSE, x, y);
    } else {
        glyph.draw(DRAW_NORMAL, x, y);
    }
}

/* Draws the characters of `s` from the left column x on; the room for them has been tested. */
static void drawCharacters(int x, int y, int font, int mode, int spacing, const char *s)
{
    while (*s != '\0') {
        const Utf8Char character = firstCharacter(s);
        const Metrics glyph = measure(font, character);
        drawCharacter(x, y, font, mode, &character);
        s = utf_8_str_forward_one(s);
        x += glyph.width;
        const Utf8Char next = firstCharacter(s);
        if (!isBreakCharacter(&character) && !isBreakCharacter(&next)) {
            if (mode == DRAW_REVERSE)
                drawRectangle(x, y, glyph.height, spacing);
            x += spacing;
        }
    }
}

void drawString(int x, int y, int font, int align, int mode, const char *s)
{
    if (!s) {
        printf("drawString return, no string\n");
        return;
    }
    if (*s == '\0')
        return;
    const Metrics first = measure(font, firstCharacter(s));
    const int width = getStringWidth(font, s, 0);
    int64_t left = x;
    if (align == ALIGN_RIGHT)
        left -= int64_t{width} - 1;
    else if (align == ALIGN_CENTER)
        left -= width / 2;
    if (isOnScreen(left, y, first.height, width)) {
        drawCharacters(static_cast<int>(left), y, font, mode, first.spacing, s);
    } else {
        printf("drawString return, x %d, y %d, strWidth %d, fontHeight %d\n", static_cast<int>(left), y, width,
               first.height);
    }
}

/* Moves `state` on to the first character to show of `s`, which is wider than its room. */
static void scrollOn(int font, const char *s, int maxWidth, int step, ScrollState *state)
{
    const int length = utf_8_str_length(s);
    if (step == 0)
        *state = {};
    else if (state->first >= length)
        state->first = 0;
    else if (getStringWidth(font, utf_8_str_forward(s, state->first), 0) > maxWidth)
        state->first++;
    else if (state->hold < END_HOLDS)
        state->hold++;
    else
        *state = {};
}

void drawStringScroll(int x, int y, int font, int align, int mode, const char *s, int maxWidth, int step,
                      ScrollState *state)
{
    if (getStringWidth(font, s, 0) <= maxWidth || !s) {
        state->first = 0;
        drawString(x, y, font, align, mode, s);
        return;
    }
    char copy[SCROLL_COPY_BYTES];
    copy_cut(copy, s);
    scrollOn(font, copy, maxWidth, step, state);
    char *shown = copy + (utf_8_str_forward(copy, state->first) - copy);
    while (*shown != '\0' && getStringWidth(font, shown, 0) > maxWidth)
        cut_text(shown, static_cast<int>(strlen(shown)) - 1);
    drawString(x, y, font, align, mode, shown);
}
