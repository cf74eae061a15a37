#include "tools/bitmap_font.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <stdexcept>

static FT_Library open_library()
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0)
        throw std::runtime_error("FreeType does not start");
    return library;
}

static FT_Face open_face(FT_Library library, const std::filesystem::path &file)
{
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.c_str(), 0, &face) != 0)
        throw std::runtime_error(file.string() + " is not a font that FreeType reads");
    return face;
}

BitmapFont::BitmapFont(const std::filesystem::path &file)
    : library_(open_library(), FT_Done_FreeType), face_(open_face(library_.get(), file), FT_Done_Face)
{
    if (FT_Select_Size(face_.get(), 0) != 0)
        throw std::runtime_error(file.string() + " is not a bitmap font");
}

static Picture picture_of(const FT_Bitmap &bitmap)
{
    Picture picture(static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows));
    for (int row = 0; row < picture.height(); ++row) {
        const unsigned char *bits = bitmap.buffer + row * bitmap.pitch;
        for (int column = 0; column < picture.width(); ++column) {
            if ((bits[column / 8] & 0x80 >> column % 8) != 0)
                picture.set(column, row);
        }
    }
    return picture;
}

std::optional<FontGlyph> BitmapFont::glyph(char32_t code) const
{
    const FT_UInt index = FT_Get_Char_Index(face_.get(), code);
    if (index == 0 || FT_Load_Glyph(face_.get(), index, FT_LOAD_DEFAULT) != 0)
        return std::nullopt;
    const FT_GlyphSlotRec &slot = *face_->glyph;
    if (slot.bitmap.pixel_mode != FT_PIXEL_MODE_MONO)
        return std::nullopt;
    return FontGlyph{picture_of(slot.bitmap), slot.bitmap_left, slot.bitmap_top, static_cast<int>(slot.advance.x >> 6)};
}
