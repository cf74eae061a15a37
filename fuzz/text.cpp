/* Texts of any bytes: walked, measured, cut, wrapped, drawn and scrolled. */
#include "gfx/text.h"

#include "core/actions.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/format.h"
#include "gfx/frame_buffer.h"
#include "gfx/info.h"
#include "gfx/utf8.h"
#include "lang/language.h"

#include <cstring>

static void check_cuts(const char *text, int most)
{
    const std::string whole = text;
    std::vector<char> cut(text, text + whole.size() + 1), copy(static_cast<size_t>(most) + 1, 'x');
    cut_text(cut.data(), most);
    copy_cut(copy, text);
    require(strcmp(cut.data(), copy.data()) == 0, "both ways to cut a text cut the same");
    const int length = static_cast<int>(strlen(cut.data()));
    require(whole.starts_with(cut.data()) && length <= most, "a cut text is a start of the text, and has its room");
    require(length > most - 3 || length == static_cast<int>(whole.size()),
            "at most a part of a character more is cut off");
    char formatted[64];
    format_text(formatted, "%s%d", text, most);
    require(strlen(formatted) < sizeof formatted, "a formatted text ends");
}

static void check_walk(const char *text, int font, int room)
{
    const int length = utf_8_str_length(text), bytes = static_cast<int>(strlen(text));
    require(length <= bytes && bytes <= 3 * length, "a character has one to three bytes");
    require(utf_8_str_forward(text, length + 1) == text + bytes, "a walk ends at the NUL");
    std::vector<char> copy(static_cast<size_t>(bytes) + 1);
    utf_8_str_copy(copy.data(), text, length + 1);
    require(strcmp(copy.data(), text) == 0, "a copy is the same text");
    const int fitting = countFittingCharacters(font, text, room);
    require(fitting == 0 || getStringWidth(font, text, fitting) <= room, "what fits is not too wide");
    require(fitting == length || getStringWidth(font, text, fitting + 1) > room, "one character more does not fit");
}

static void check_lines(const char *text, int font, int width)
{
    const char *const end = text + strlen(text);
    for (int consumed = 1; consumed > 0; text += consumed) {
        char line[LINE_BUFFER_BYTES];
        consumed = fitLine(font, text, line, width);
        require(consumed >= 0 && consumed <= end - text, "a line lies within its text");
        require(strlen(line) < sizeof line && getStringWidth(font, line, 0) <= width, "a line fits");
    }
}

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(LANGUAGE_EN, LANGUAGE_KR));
    const int font = in.number(1, 3), room = in.number(0, 255), steps = in.number(0, 3);
    const int x = in.number(0, 255) - 64, y = in.number(0, 127) - 32;
    const std::vector<char> text = exact(in.rest());
    check_cuts(text.data(), room);
    check_walk(text.data(), font, room);
    check_lines(text.data(), font, room);
    ScrollState scroll = {.first = room - 100, .hold = steps};
    clearScreenBuffer();
    for (int step = 0; step < steps; step++) {
        drawString(x, y, font, step % 3, DRAW_NORMAL + step % 2, text.data());
        drawStringScroll(x, y, font, step % 3, DRAW_NORMAL + step % 2, text.data(), room - 20, step, &scroll);
        require(scroll.first >= 0 && scroll.first < 300, "a scrolling text starts within itself");
    }
}
