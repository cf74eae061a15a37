/* The cells of the panel's glyphs: where the pixels of a font's glyph go. */
#pragma once

#include "tools/bitmap_font.h"

/* A letter in font 1: trimmed to its ink, on the Latin baseline. Digits are equally wide; punctuation, beside which the
 * panel puts no spacing, keeps a blank column on each side. */
Picture latin_cell(char32_t c, const FontGlyph &glyph);

/* A glyph of an East Asian font in font 1: its whole cell, so that texts keep their grid; trimmed if half as wide. The
 * letters of other alphabets there are Latin ones. */
Picture east_asian_cell(char32_t c, const FontGlyph &glyph);

/* A digit of a large font whose digits are `width` pixels wide and `height` high: in the middle of that cell. */
Picture digit_cell(const FontGlyph &glyph, int width, int height);

/* A point or colon of a large font `height` pixels high, `side` blank columns on each side. */
Picture mark_cell(const FontGlyph &glyph, int side, int height);
