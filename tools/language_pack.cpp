#include "tools/language_pack.h"

#include "lang/text_id.h"
#include "tools/panel_text.h"
#include "tools/problems.h"

#include <charconv>
#include <optional>

using EntryIndex = std::array<const PoEntry *, TEXT_COUNT>;

static constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

static bool is_unused(std::size_t number)
{
    return number == TEXT_UNUSED_2 || number == TEXT_UNUSED_107 || number == TEXT_UNUSED_115;
}

/* The number that a context begins with; a role follows it after a blank. */
static std::optional<std::size_t> text_number(const std::string &context)
{
    std::size_t number = 0;
    const char *end = context.data() + context.size();
    const auto [stop, error] = std::from_chars(context.data(), end, number);
    const bool known = error == std::errc() && number < TEXT_COUNT && !is_unused(number);
    if (!known || (stop != end && *stop != ' '))
        return std::nullopt;
    return number;
}

static EntryIndex index_entries(const std::string &file, const std::vector<PoEntry> &entries, Problems &problems)
{
    EntryIndex index{};
    for (const PoEntry &entry : entries) {
        const std::optional<std::size_t> number = text_number(entry.context);
        if (!number)
            problems.error(entry.place, "no text of a pack has the context \"" + entry.context + '"');
        else if (index[*number] != nullptr)
            problems.error(entry.place,
                           "text " + std::to_string(*number) + " stands already at " + index[*number]->place);
        else
            index[*number] = &entry;
    }
    for (std::size_t number = 0; number < index.size(); ++number) {
        if (index[number] == nullptr && !is_unused(number))
            problems.error(file, "text " + std::to_string(number) + " is missing");
    }
    return index;
}

PackTexts english_texts(const std::string &file, const std::vector<PoEntry> &entries, Problems &problems)
{
    const EntryIndex index = index_entries(file, entries, problems);
    PackTexts texts;
    for (std::size_t number = 0; number < index.size(); ++number) {
        const PoEntry *entry = index[number];
        if (entry == nullptr)
            continue;
        if (entry->id.empty())
            problems.error(entry->place, "no text; one that is empty on purpose is written (empty)");
        texts[number] = {panel_text(entry->id), entry->place};
    }
    return texts;
}

/* What keeps a translation of `english` out of a pack, or "". */
static std::string translation_fault(const PoEntry &entry, const PoEntry &english)
{
    if (entry.context != english.context)
        return "the template has the context \"" + english.context + '"';
    if (entry.id != english.id)
        return "the template has the text \"" + english.id + "\", here it is \"" + entry.id + '"';
    if (entry.text.empty())
        return "not translated; a text that is empty on purpose is written (empty)";
    if (entry.fuzzy)
        return "marked fuzzy: check the translation, then remove the mark";
    return "";
}

PackTexts translated_texts(const std::string &file, const std::vector<PoEntry> &entries,
                           const std::vector<PoEntry> &english, Problems &problems)
{
    const EntryIndex index = index_entries(file, entries, problems);
    PackTexts texts;
    for (const PoEntry &original : english) {
        const std::optional<std::size_t> number = text_number(original.context);
        if (!number || index[*number] == nullptr)
            continue;
        const PoEntry &entry = *index[*number];
        const std::string fault = translation_fault(entry, original);
        if (!fault.empty())
            problems.error(entry.place, fault);
        texts[*number] = {panel_text(entry.text), entry.place};
    }
    return texts;
}

std::string pack_file(const std::string &file, const PackTexts &texts, Problems &problems)
{
    std::string pack(BYTE_ORDER_MARK);
    for (const PackText &text : texts)
        pack += text.text + '\0';
    const std::size_t bytes = pack.size() - BYTE_ORDER_MARK.size();
    if (bytes > LANGUAGE_PACK_BYTES)
        problems.error(file, "the texts take " + std::to_string(bytes) + " bytes, a pack holds " +
                                 std::to_string(LANGUAGE_PACK_BYTES));
    return pack;
}
