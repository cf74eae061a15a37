/* A router root for drawing tests: pictures, glyphs and languages of a test's own. */
#pragma once

#include "lang/language.h"
#include "lang/text_id.h"
#include "tests/support/test_root.h"

#include <map>

/* Every ASCII character has a glyph of 5 x 12 pixels, and the current language is English, with a handful of texts. */
class GlyphRoot : public TestRoot
{
public:
    GlyphRoot()
    {
        for (int code = 0; code < 0x80; code++)
            glyph(code, 5, 12);
        use_language(0);
    }
    ~GlyphRoot() { use_language(0); }

    /* Writes the file of the picture called `name`, in upper case. */
    void picture(const std::string &name, const std::string &bytes) const
    {
        write("/sbin/lcd_ml/_auto_bitmap_/" + name, bytes);
    }

    /* Gives a character a glyph: beside a full left column, the bits of its code in the second; four blank rows. */
    void glyph(int code, int width, int height) const
    {
        char name[16];
        snprintf(name, sizeof name, "U_%04X", static_cast<unsigned>(code));
        std::string bytes = {0, static_cast<char>(width), 0, static_cast<char>(height)};
        for (int bit = 7; bit >= 0; bit--)
            bytes += code >> bit & 1 ? '\xC0' : '\x80';
        picture(name, bytes);
    }

    /* Makes the language with this id the current one, with these texts besides its own. */
    void use_language(int id, std::map<int, std::string> texts = {}) const
    {
        texts.insert({{TEXT_OK_KEY, "OK"}, {TEXT_MORE, "more"}, {TEXT_COMPUTER, "PC"}});
        texts.insert({{TEXT_UNIT_KILO, "k"}, {TEXT_UNIT_MEGA, "M"}, {TEXT_UNIT_GIGA, "G"}});
        std::string pack = "\xEF\xBB\xBF";
        for (int text = 0; text < TEXT_COUNT; text++)
            pack += texts[text] + '\0';
        write(std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(id), pack);
        load_language(id);
    }
};
