/* Texts as their authors write them and as the panel holds them. */
#pragma once

#include <string>
#include <string_view>

/* What lays a text out and needs no glyph: the gap of a title, the ends of a row and of a page. */
constexpr std::u32string_view NEVER_DRAWN = U"\t\n\f";

/* What a language pack holds for a text: "(empty)" is the empty text, the arrows are the key glyphs 0x10 to 0x12. */
std::string panel_text(std::string written);

/* A text of a pack as messages show it: what cannot be seen has a stand-in. */
std::string visible_text(std::string text);
