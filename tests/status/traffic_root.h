/* A router root for traffic: the words of its numbers, and glyphs of 5 pixels for all of ASCII. */
#pragma once

#include "lang/text_id.h"
#include "tests/gfx/glyph_root.h"

class TrafficRoot : public GlyphRoot {
public:
    explicit TrafficRoot(const std::string &mega = "M")
    {
        for (unsigned code = 0; code < 0x80; code++) {
            char name[16];
            snprintf(name, sizeof name, "U_%04X", code);
            picture(name, {0, 5, 0, 12});
        }
        std::string texts[TEXT_COUNT];
        texts[TEXT_COMPUTER] = "PC";
        texts[TEXT_UNIT_GIGA] = "G";
        texts[TEXT_UNIT_MEGA] = mega;
        texts[TEXT_UNIT_KILO] = "k";
        std::string pack = "\xEF\xBB\xBF";
        for (const std::string &text : texts)
            pack += text + '\0';
        write(std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(0), pack);
        load_language(0);
    }

    void write_speed(const std::string &name, const std::string &text) const
    {
        write("/tmp/lcd/network_status/speed/" + name, text);
    }
};
