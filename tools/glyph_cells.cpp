#include "tools/glyph_cells.h"

#include "tools/glyph_files.h"

#include <algorithm>

static constexpr int LATIN_BASELINE = 9;       // rows above the baseline: no letter of ASCII reaches the last row
static constexpr int EAST_ASIAN_BASELINE = 10; // the same where glyphs fill all rows
static constexpr int DIGIT_WIDTH = 5;
static constexpr int HALF_WIDTH_ADVANCE = 6;
static constexpr char32_t FIRST_EAST_ASIAN = 0x2E80;
static constexpr int FULL_WIDTH = 11; // columns of a cell; one more where there is ink in it

namespace
{
struct Extent {
    int first; // column of the first ink
    int width; // 0: no ink
};
} // namespace

/* The glyph with its ink from column `left` on, `baseline` of the `height` rows above the baseline. */
static Picture on_rows(const FontGlyph &glyph, int left, int baseline, int height)
{
    Picture picture(std::max(left + glyph.ink.width(), 1), height);
    for (int row = 0; row < glyph.ink.height(); ++row) {
        for (int column = 0; column < glyph.ink.width(); ++column) {
            if (glyph.ink.at(column, row))
                picture.set(left + column, baseline - glyph.top + row);
        }
    }
    return picture;
}

static Extent ink_extent(const Picture &picture)
{
    const auto has_ink = [&picture](int column) {
        for (int row = 0; row < picture.height(); ++row) {
            if (picture.at(column, row))
                return true;
        }
        return false;
    };
    int first = 0;
    int end = picture.width();
    while (end > 0 && !has_ink(end - 1))
        --end;
    while (first < end && !has_ink(first))
        ++first;
    return {first, end - first};
}

static bool has_ink(const Picture &picture, int row)
{
    for (int column = 0; column < picture.width(); ++column) {
        if (picture.at(column, row))
            return true;
    }
    return false;
}

/* The accents of small letters stand as high as those of capitals: two blank rows above their letter, and in the row
 * that the rule of a bottom line touches. One row lower they belong to their letter. */
static Picture with_lowered_accent(const Picture &letter)
{
    constexpr int accent_rows = 2;
    if (!has_ink(letter, 0) || has_ink(letter, accent_rows) || has_ink(letter, accent_rows + 1))
        return letter;
    Picture lowered(letter.width(), letter.height());
    for (int row = 0; row < letter.height(); ++row) {
        for (int column = 0; column < letter.width(); ++column) {
            if (letter.at(column, row))
                lowered.set(column, row < accent_rows ? row + 1 : row);
        }
    }
    return lowered;
}

/* The ink with `side` blank columns on each side; of a blank glyph, its advance less the spacing that follows. */
static Picture trimmed(const Picture &picture, int advance, int side)
{
    const Extent ink = ink_extent(picture);
    if (ink.width == 0)
        return Picture(std::max(advance - 1, 1), picture.height());
    return picture.columns(ink.first - side, ink.width + 2 * side);
}

static Picture centred(const Picture &picture, int width)
{
    const Extent ink = ink_extent(picture);
    return picture.columns(ink.first - (width - ink.width + 1) / 2, width);
}

Picture latin_cell(char32_t c, const FontGlyph &glyph)
{
    const Picture picture = with_lowered_accent(on_rows(glyph, 0, LATIN_BASELINE, GLYPH_HEIGHT));
    if (c >= U'0' && c <= U'9')
        return centred(picture, DIGIT_WIDTH);
    return trimmed(picture, glyph.advance, is_break_character(c) ? 1 : 0);
}

Picture east_asian_cell(char32_t c, const FontGlyph &glyph)
{
    const bool half_width = glyph.advance <= HALF_WIDTH_ADVANCE;
    /* Greek and Cyrillic stand beside Latin letters. */
    if (half_width && c < FIRST_EAST_ASIAN)
        return latin_cell(c, glyph);
    const Picture picture = on_rows(glyph, glyph.left, EAST_ASIAN_BASELINE, GLYPH_HEIGHT);
    if (half_width)
        return trimmed(picture, glyph.advance, 0);
    const Extent ink = ink_extent(picture);
    return picture.columns(0, std::clamp(ink.first + ink.width, FULL_WIDTH, FULL_WIDTH + 1));
}

Picture digit_cell(const FontGlyph &glyph, int width, int height)
{
    return centred(on_rows(glyph, 0, height, height), width);
}

Picture mark_cell(const FontGlyph &glyph, int side, int height)
{
    return trimmed(on_rows(glyph, 0, height, height), glyph.advance, side);
}
