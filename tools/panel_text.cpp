#include "tools/panel_text.h"

#include <string_view>
#include <utility>

static constexpr const char *EMPTY = "(empty)";

static constexpr std::pair<std::string_view, std::string_view> arrows[] = {{"→", "\x10"}, {"←", "\x11"}, {"↕", "\x12"}};
static constexpr std::pair<std::string_view, std::string_view> breaks[] = {{"\t", " | "}, {"\n", " "}, {"\f", " "}};

static void replace_all(std::string &text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string panel_text(std::string written)
{
    if (written == EMPTY)
        return "";
    for (const auto &[arrow, glyph] : arrows)
        replace_all(written, arrow, glyph);
    return written;
}

std::string visible_text(std::string text)
{
    for (const auto &[arrow, glyph] : arrows)
        replace_all(text, glyph, arrow);
    for (const auto &[control, shown] : breaks)
        replace_all(text, control, shown);
    return text;
}
