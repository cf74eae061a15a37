#include "tools/text_check.h"

#include "gfx/widget.h"
#include "lang/text_id.h"
#include "tools/charset.h"
#include "tools/composition.h"
#include "tools/glyph_widths.h"
#include "tools/problems.h"
#include "tools/text_rooms.h"

#include <algorithm>

static constexpr std::u32string_view LINE_BREAKS = U"\n\f";
static constexpr std::u32string_view KEY_GLYPHS = U"\x10\x11\x12";
static constexpr int TITLE_GAP = 5; // pixels between the two parts of a title
static constexpr int PAGE_ROWS = 4; // most lines of a page

namespace {
/* One check of one pack. */
struct Check {
    LanguageLayout layout;
    GlyphWidths &widths;
    int more_mark; // width of the mark that ends a page
    Problems &problems;
};
}

LanguageLayout language_layout(std::string_view code)
{
    const bool breaks_anywhere = code == "tc" || code == "jp";
    return {breaks_anywhere || code == "kr", breaks_anywhere};
}

static bool is_line_break(char32_t c)
{
    return LINE_BREAKS.find(c) != std::u32string_view::npos;
}

/* Why a character cannot be drawn, or "". */
static std::string character_fault(char32_t c, GlyphWidths &widths)
{
    if (c == U'\t' || is_line_break(c))
        return "";
    if (c < U' ' && KEY_GLYPHS.find(c) == std::u32string_view::npos)
        return "is a control character that the panel does not know";
    if (c > 0xFFFF)
        return "lies outside the Basic Multilingual Plane";
    if (!widths.glyph(c))
        return "has no glyph of " + std::to_string(GLYPH_HEIGHT) + " rows";
    return "";
}

static void check_characters(const PackText &text, const Check &check)
{
    std::optional<std::u32string> characters = decode_utf8(text.text);
    if (!characters) {
        check.problems.error(text.place, "the text is not UTF-8");
        return;
    }
    std::ranges::sort(*characters);
    const auto repeated = std::ranges::unique(*characters);
    characters->erase(repeated.begin(), repeated.end());
    for (const char32_t c : *characters) {
        const std::string fault = character_fault(c, check.widths);
        if (!fault.empty())
            check.problems.error(text.place, character_name(c) + ' ' + fault);
    }
}

static std::string pixels_fault(const std::string &what, int width, int room)
{
    return what + " is " + std::to_string(width) + " pixels wide, there is room for " + std::to_string(room);
}

static void check_line(const Composition &line, std::u32string_view text, const TextRoom &room, int pixels,
                       const Check &check)
{
    const std::size_t tab = text.find(U'\t');
    const bool parted = tab != std::u32string_view::npos;
    int width = check.widths.text(text.substr(0, tab));
    if (parted)
        width += TITLE_GAP + check.widths.text(text.substr(tab + 1));
    if (width <= pixels)
        return;
    if (room.kind == RoomKind::FIXED || parted)
        check.problems.error(line.place, pixels_fault(line.shown(), width, pixels));
    else
        check.problems.warning(line.place, pixels_fault(line.shown(), width, pixels) + " and will scroll");
}

/* The length of the part at the start of a page's text that stays on one line. */
static std::size_t piece_length(std::u32string_view text, LanguageLayout layout)
{
    if (layout.breaks_anywhere)
        return 1;
    const auto ends_piece = [](char32_t c) { return is_break_character(c) || is_line_break(c); };
    const auto end = std::ranges::find_if(text, ends_piece);
    return static_cast<std::size_t>(end - text.begin()) + (end == text.end() ? 0 : 1);
}

/* The panel lays nothing out after a word wider than a line, nor after its last line. */
static void check_page(const Composition &page, std::u32string_view text, int pixels, const Check &check)
{
    int lines = 1;
    std::size_t line_start = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = at + piece_length(text.substr(at), check.layout);
        const char32_t last = text[end - 1];
        const bool breaks = is_break_character(last) || is_line_break(last);
        const std::u32string_view word = text.substr(at, end - at - (breaks ? 1 : 0));
        const int width = check.widths.text(word);
        if (width > pixels)
            check.problems.error(page.place, pixels_fault("the word \"" + encode_utf8(word) + '"', width, pixels));
        if (check.widths.text(text.substr(line_start, end - line_start)) > pixels - check.more_mark) {
            line_start = at;
            ++lines;
        }
        if (is_line_break(last)) {
            line_start = end;
            lines += last == U'\f' ? PAGE_ROWS : 1;
        }
        at = end;
    }
    if (lines > MAX_PAGE_LINES)
        check.problems.error(page.place, "text " + page.numbers + " takes about " + std::to_string(lines) +
                                             " lines, a page holds " + std::to_string(MAX_PAGE_LINES));
}

/* Only pages have line breaks, and only titles a TAB. */
static bool has_misplaced_control(std::u32string_view text, RoomKind kind)
{
    const auto tabs = std::ranges::count(text, U'\t');
    return tabs > (kind == RoomKind::TITLE ? 1 : 0) ||
           (kind != RoomKind::PAGE && std::ranges::any_of(text, is_line_break));
}

static void check_room(const TextRoom &room, const PackTexts &texts, const Check &check)
{
    const int pixels = check.layout.wide ? room.wide : room.narrow;
    if (pixels == 0)
        return;
    for (const Composition &composition : compose(room.pattern, texts)) {
        const std::u32string text = decode_utf8(composition.text).value_or(U"");
        if (composition.text.size() > static_cast<std::size_t>(room.bytes))
            check.problems.error(composition.place, composition.shown() + " has " +
                                                        std::to_string(composition.text.size()) +
                                                        " bytes, its buffer holds " + std::to_string(room.bytes));
        if (has_misplaced_control(text, room.kind))
            check.problems.error(composition.place, composition.shown() + " has a line break or TAB where none can be");
        else if (room.kind == RoomKind::PAGE)
            check_page(composition, text, pixels, check);
        else
            check_line(composition, text, room, pixels, check);
    }
}

void check_texts(const PackTexts &texts, LanguageLayout layout, GlyphWidths &widths, Problems &problems)
{
    const std::u32string more_mark = decode_utf8(texts[TEXT_MORE].text).value_or(U"");
    const Check check = {layout, widths, widths.text(more_mark), problems};
    for (const PackText &text : texts)
        check_characters(text, check);
    for (const TextRoom &room : text_rooms())
        check_room(room, texts, check);
}
