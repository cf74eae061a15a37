#include "tools/pack_compiler.h"

#include "tools/glyph_widths.h"
#include "tools/language_pack.h"
#include "tools/problems.h"
#include "tools/text_check.h"

std::optional<std::string> compile_pack(const std::filesystem::path &original, const std::filesystem::path &translation,
                                        const std::filesystem::path &bitmaps, Problems &problems)
{
    const bool translated = !translation.empty();
    const std::filesystem::path &source = translated ? translation : original;
    const std::vector<PoEntry> english = read_po_file(original, problems);
    const std::vector<PoEntry> entries = translated ? read_po_file(source, problems) : english;
    if (problems.failed())
        return std::nullopt;

    PackTexts texts = english_texts(original, english, problems);
    if (translated)
        texts = translated_texts(source, entries, english, problems);
    GlyphWidths widths(bitmaps);
    check_texts(texts, language_layout(translated ? source.stem().string() : "en"), widths, problems);
    const std::string pack = pack_file(source, texts, problems);
    return problems.failed() ? std::nullopt : std::optional(pack);
}
