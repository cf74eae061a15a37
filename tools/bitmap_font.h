/* Bitmap fonts, read with FreeType: their pixels as they were drawn, nothing is rasterised. */
#pragma once

#include "tools/picture.h"

#include <filesystem>
#include <memory>
#include <optional>

struct FT_FaceRec_;
struct FT_LibraryRec_;

struct FontGlyph {
    Picture ink;
    int left;    // column of the picture's first one in the cell
    int top;     // rows of the picture that lie above the baseline
    int advance; // width of the cell
};

class BitmapFont
{
public:
    /* Throws when the file is no bitmap font. */
    explicit BitmapFont(const std::filesystem::path &file);

    /* The glyph of a code, a code point in all fonts but those with a table of their own; nothing when it has none. */
    std::optional<FontGlyph> glyph(char32_t code) const;

private:
    std::unique_ptr<FT_LibraryRec_, int (*)(FT_LibraryRec_ *)> library_;
    std::unique_ptr<FT_FaceRec_, int (*)(FT_FaceRec_ *)> face_;
};
