/* A router root for drawing tests: picture files, and languages without texts. */
#pragma once

#include "lang/language.h"
#include "tests/support/test_root.h"

class GlyphRoot : public TestRoot
{
public:
    ~GlyphRoot() { use_language(0); }

    /* Writes the file of the picture called `name`, in upper case. */
    void picture(const std::string &name, const std::string &bytes) const
    {
        write("/sbin/lcd_ml/_auto_bitmap_/" + name, bytes);
    }

    /* Makes the language with this id the current one. */
    void use_language(int id) const
    {
        write(std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(id),
              "\xEF\xBB\xBF" + std::string(TEXT_COUNT, '\0'));
        load_language(id);
    }
};
