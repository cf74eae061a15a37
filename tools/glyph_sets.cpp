#include "tools/glyph_sets.h"

#include "tools/charset.h"

#include <algorithm>
#include <span>
#include <stdexcept>

namespace
{
struct Range {
    char32_t first;
    char32_t last;
};

/* Two-byte characters of a character set, from one to another in its order. */
struct CodeTable {
    const char *charset;
    int first;
    int last;
};
} // namespace

/* Printable ASCII belongs to the packs: host names, addresses and passwords are written in it. */
static constexpr Range packs_ranges[] = {{0x20, 0x7E}};

static constexpr Range base_ranges[] = {{0xA0, 0x17F}, {0x218, 0x21B}};
static constexpr std::u32string_view base_characters = U"‘’‚“”„†•…–—‹›€™";

static constexpr Range asia_ranges[] = {
    {0x3000, 0x303F}, // punctuation
    {0x3040, 0x30FF}, // kana
    {0x3100, 0x312F}, // bopomofo
    {0x3130, 0x318F}, // jamo
    {0xFF01, 0xFFEF}, // half- and full-width forms
};
static constexpr CodeTable asia_tables[] = {
    {"BIG5", 0xA440, 0xC67E},   // level 1
    {"EUC-JP", 0xB0A1, 0xCFD3}, // level 1
    {"EUC-KR", 0xB0A1, 0xC8FE}, // Hangul
};

static constexpr Range full_ranges[] = {{0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}};

static void add_ranges(std::set<char32_t> &set, std::span<const Range> ranges)
{
    for (const Range &range : ranges) {
        for (char32_t c = range.first; c <= range.last; ++c)
            set.insert(c);
    }
}

static void add_table(std::set<char32_t> &set, const CodeTable &table)
{
    Converter converter("UTF-8", table.charset);
    for (int code = table.first; code <= table.last; ++code) {
        const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        const std::optional<std::string> text = converter.convert({bytes, sizeof bytes});
        const std::u32string characters = text ? decode_utf8(*text).value_or(U"") : U"";
        if (characters.size() == 1)
            set.insert(characters[0]);
    }
}

std::set<char32_t> glyph_set(std::string_view name)
{
    const auto found = std::ranges::find(GLYPH_SETS, name);
    if (found == std::end(GLYPH_SETS))
        throw std::invalid_argument("no glyph set is called " + std::string(name));
    const auto level = found - std::begin(GLYPH_SETS);
    std::set<char32_t> set;
    add_ranges(set, packs_ranges);
    if (level >= 1) {
        add_ranges(set, base_ranges);
        set.insert(base_characters.begin(), base_characters.end());
    }
    if (level >= 2) {
        add_ranges(set, asia_ranges);
        for (const CodeTable &table : asia_tables)
            add_table(set, table);
    }
    if (level >= 3)
        add_ranges(set, full_ranges);
    return set;
}
