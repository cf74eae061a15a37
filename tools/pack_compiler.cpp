#include "tools/pack_compiler.h"

#include "lang/language.h"
#include "tools/language_pack.h"
#include "tools/page_check.h"
#include "tools/problems.h"
#include "tools/text_check.h"
#include "tools/trial_panel.h"

std::optional<std::string> compile_pack(const std::filesystem::path &original, const std::filesystem::path &translation,
                                        const std::filesystem::path &bitmaps, Problems &problems)
{
    const bool translated = !translation.empty();
    const std::filesystem::path &source = translated ? translation : original;
    const std::string code = translated ? source.stem().string() : "en";
    if (get_lang_nvram_value_by_id(get_lang_id_by_nvram(code.c_str())) != code)
        problems.error(source, "the panel has no language \"" + code + "\"");
    if (!std::filesystem::is_directory(bitmaps))
        problems.error(bitmaps, "no folder of glyph files");
    const std::vector<PoEntry> english = read_po_file(original, problems);
    const std::vector<PoEntry> entries = translated ? read_po_file(source, problems) : english;
    if (problems.failed())
        return std::nullopt;

    PackTexts texts = english_texts(original, english, problems);
    if (translated)
        texts = translated_texts(source, entries, english, problems);
    check_characters(texts, bitmaps, problems);
    const std::string pack = pack_file(source, texts, problems);
    if (problems.failed())
        return std::nullopt;

    const TrialPanel panel(code, pack, bitmaps);
    check_rooms(texts, panel, problems);
    check_pages(texts, panel, problems);
    return problems.failed() ? std::nullopt : std::optional(pack);
}
