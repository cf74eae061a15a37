/* What the tests of the widgets share: glyphs that can be read back from the screen, and records full of garbage. */
#pragma once

#include "gfx/frame_buffer.h"
#include "gfx/widget.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "tests/gfx/glyph_root.h"

#include <climits>
#include <random>

/* Every ASCII character has a glyph of 5 x 12 pixels: a full row at the top, a full column at the left, the bits of its
 * code in the right column, four blank rows. */
class WidgetTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (int code = 0; code < 0x80; code++)
            write_glyph(code, 5, 12);
        use_language(0);
    }

    void write_glyph(int code, int width, int height) const
    {
        char name[16];
        snprintf(name, sizeof name, "U_%04X", static_cast<unsigned>(code));
        std::string bytes = {0, static_cast<char>(width), 0, static_cast<char>(height), '\xF8'};
        for (int bit = 6; bit >= 0; bit--)
            bytes += code >> bit & 1 ? '\x88' : '\x80';
        root.picture(name, bytes);
    }

    void use_language(int id) const
    {
        std::string pack = "\xEF\xBB\xBF";
        for (int text = 0; text < TEXT_COUNT; text++)
            pack += std::string(text == TEXT_OK_KEY ? "OK" : text == TEXT_MORE ? "more" : "") + '\0';
        root.write(std::string("/sbin/lcd_ml/_auto_lang_/") + get_lang_file_by_id(id), pack);
        load_language(id);
    }

    GlyphRoot root;
};

/* The glyphs in the columns `from` to `to` of the line with top edge `y`, '~' for more than one column between two. An
 * inverted line stands in brackets. */
inline std::string read_line(int y, int from = 1, int to = ROW_RIGHT)
{
    const bool inverted = getDot(from, y - 11) == 1;
    const auto ink = [&](int x, int row) { return (getDot(x, y - 1 - row) == 1) != inverted; };
    const auto begins_glyph = [&](int x) {
        bool full = true;
        for (int i = 0; i < 8; i++)
            full = full && ink(x, i) && ink(x + std::min(i, 4), 0);
        return full;
    };
    std::string text;
    int gap = 0;
    for (int x = from; x + 4 <= to;) {
        if (!begins_glyph(x)) {
            x++;
            gap++;
            continue;
        }
        if (gap > 1 && !text.empty())
            text += '~';
        int code = 0;
        for (int row = 1; row < 8; row++)
            code = code * 2 + (ink(x + 4, row) ? 1 : 0);
        text += static_cast<char>(code);
        gap = 0;
        x += 5;
    }
    return inverted ? "[" + text + "]" : text;
}

/* How far below the top of its track the thumb of the scroll bar beside three rows stands. */
inline int thumb_offset()
{
    int offset = 0;
    while (!getDot(122, 43 - offset))
        offset++;
    return offset;
}

/* The ASCII characters whose glyphs `run` looked for in vain, each with the number of times in a row: "a2 b1 ". */
template <typename Run> std::string loads(Run run)
{
    static constexpr std::string_view MISS = "no bitmap for U_";
    const std::string messages = printed(run);
    std::string runs;
    int last = -1;
    int times = 0;
    for (size_t at = messages.find(MISS); times == 0 || last >= 0; at = messages.find(MISS, at + 1)) {
        const int code = at == std::string::npos ? -1 : std::stoi(messages.substr(at + MISS.size(), 4), nullptr, 16);
        if (code != last && times > 0) {
            runs += static_cast<char>(last) + std::to_string(times) + " ";
            times = 0;
        }
        last = code;
        times++;
    }
    return runs;
}

/* A record as no widget leaves it. */
inline WidgetState garbage(std::mt19937 &random)
{
    static const int32_t values[] = {INT_MIN, INT_MIN + 1, -200, -1, 0, 1, 2, 3, 7, 15, 21, 199, 201, INT_MAX};
    const auto any = [&] { return values[random() % std::size(values)]; };
    WidgetState state = {any(), any(), any(), any(), static_cast<uint16_t>(random()), {}};
    for (int32_t &start : state.lineStart)
        start = any();
    return state;
}
