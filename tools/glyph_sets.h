/* Which characters get glyphs. */
#pragma once

#include <set>
#include <string_view>
#include <vector>

/* The names of the sets. Each holds those before it: what the language packs need; what names and addresses in
 * European languages need; the usual characters of Traditional Chinese, Japanese and Korean; the rarer ones. */
constexpr std::string_view GLYPH_SETS[] = {"packs", "base", "asia", "full"};

/* Characters of the set called `name` beyond those of the packs. Throws std::invalid_argument for an unknown set. */
std::set<char32_t> glyph_set(std::string_view name);
