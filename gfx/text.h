/* One line of text: measured, drawn, scrolled.
 *
 * (x, y) is the top edge of the line: glyph rows begin one row below y. Fonts are 1..3. Texts are UTF-8, at most 299
 * bytes where they scroll (longer ones are cut). A text is drawn whole or refused with a message on standard output. */
#pragma once

struct Utf8Char;

enum Alignment {
    ALIGN_LEFT = 0,   // x is the leftmost column
    ALIGN_CENTER = 1, // x is the middle
    ALIGN_RIGHT = 2,  // x is the rightmost column
};

/* Where a scrolling text stands; its owner keeps it, zero at start. */
struct ScrollState {
    int first; // index of the first character shown
    int hold;  // calls for which the end has been held
};

/* Width in pixels of the first `maxChars` characters of `s`, of all for 0. A null text is reported and 0 wide. */
int getStringWidth(int font, const char *s, int maxChars);

/* How many leading characters of `s` are at most `maxWidth` pixels wide together. */
int countFittingCharacters(int font, const char *s, int maxWidth);

/* Draws one glyph; in DRAW_REVERSE, light on a dark box. */
void drawCharacter(int x, int y, int font, int mode, const Utf8Char *character);

/* Draws one line of text. */
void drawString(int x, int y, int font, int align, int mode, const char *s);

/* Draws `s`, or the part of it that fits in `maxWidth` pixels. That part moves on by a character at each call with a
 * `step` other than 0, which shows the start. */
void drawStringScroll(int x, int y, int font, int align, int mode, const char *s, int maxWidth, int step,
                      ScrollState *state);
