#include "tools/text_check.h"

#include "tools/charset.h"
#include "tools/composition.h"
#include "tools/glyph_files.h"
#include "tools/panel_text.h"
#include "tools/problems.h"
#include "tools/text_rooms.h"
#include "tools/trial_panel.h"

#include <algorithm>

static constexpr std::string_view LINE_BREAKS = "\n\f";
static constexpr std::u32string_view KEY_GLYPHS = U"\x10\x11\x12";
static constexpr int TITLE_GAP = 5; // pixels between the two parts of a title

/* Why a character cannot be drawn, or "". */
static std::string character_fault(char32_t c, const std::filesystem::path &bitmaps)
{
    if (NEVER_DRAWN.find(c) != std::u32string_view::npos)
        return "";
    if (c < U' ' && KEY_GLYPHS.find(c) == std::u32string_view::npos)
        return "is a control character that the panel does not know";
    if (c > 0xFFFF)
        return "lies outside the Basic Multilingual Plane";
    if (!has_glyph(bitmaps, c))
        return "has no glyph of " + std::to_string(GLYPH_HEIGHT) + " rows";
    return "";
}

static void check_text_characters(const PackText &text, const std::filesystem::path &bitmaps, Problems &problems)
{
    std::optional<std::u32string> characters = decode_utf8(text.text);
    if (!characters) {
        problems.error(text.place, "the text is not UTF-8");
        return;
    }
    std::ranges::sort(*characters);
    characters->erase(std::unique(characters->begin(), characters->end()), characters->end());
    for (const char32_t c : *characters) {
        const std::string fault = character_fault(c, bitmaps);
        if (!fault.empty())
            problems.error(text.place, character_name(c) + ' ' + fault);
    }
}

void check_characters(const PackTexts &texts, const std::filesystem::path &bitmaps, Problems &problems)
{
    for (const PackText &text : texts)
        check_text_characters(text, bitmaps, problems);
}

/* Only pages have line breaks, and only titles a TAB. */
static bool has_misplaced_control(const std::string &text, RoomKind kind)
{
    const auto tabs = std::ranges::count(text, '\t');
    return tabs > (kind == RoomKind::TITLE ? 1 : 0) ||
           (!is_page(kind) && text.find_first_of(LINE_BREAKS) != std::string::npos);
}

static void check_width(const Composition &line, const TextRoom &room, const TrialPanel &panel, Problems &problems)
{
    const int pixels = panel.is_wide() ? room.wide : room.narrow;
    const std::size_t tab = line.text.find('\t');
    const bool parted = tab != std::string::npos;
    int width = panel.width(line.text.substr(0, tab));
    if (parted)
        width += TITLE_GAP + panel.width(line.text.substr(tab + 1));
    if (width <= pixels)
        return;
    const std::string fault =
        line.shown() + " is " + std::to_string(width) + " pixels wide, there is room for " + std::to_string(pixels);
    if (room.kind == RoomKind::FIXED || parted)
        problems.error(line.place, fault);
    else
        problems.warning(line.place, fault + " and will scroll");
}

static void check_room(const Composition &text, const TextRoom &room, const TrialPanel &panel, Problems &problems)
{
    const std::size_t bytes = text.text.size();
    if (bytes > static_cast<std::size_t>(room.bytes))
        problems.error(text.place, text.shown() + " has " + std::to_string(bytes) + " bytes, its buffer holds " +
                                       std::to_string(room.bytes));
    if (has_misplaced_control(text.text, room.kind))
        problems.error(text.place, text.shown() + " has a line break or TAB where none can be");
    else if (!is_page(room.kind))
        check_width(text, room, panel, problems);
}

void check_rooms(const PackTexts &texts, const TrialPanel &panel, Problems &problems)
{
    for (const TextRoom &room : text_rooms()) {
        if ((panel.is_wide() ? room.wide : room.narrow) == 0)
            continue;
        for (const Composition &text : compose(room.pattern, texts))
            check_room(text, room, panel, problems);
    }
}
