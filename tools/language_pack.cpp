#include "tools/language_pack.h"

#include "lang/text_id.h"
#include "tools/panel_text.h"
#include "tools/problems.h"

#include <charconv>
#include <optional>
#include <set>
#include <string_view>

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

static EntryIndex index_entries(const std::vector<PoEntry> &entries, Problems &problems)
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
    return index;
}

PackTexts english_texts(const std::string &file, const std::vector<PoEntry> &entries, Problems &problems)
{
    const EntryIndex index = index_entries(entries, problems);
    PackTexts texts;
    for (std::size_t number = 0; number < index.size(); ++number) {
        const PoEntry *entry = index[number];
        if (entry != nullptr) {
            if (entry->id.empty())
                problems.error(entry->place, "no text; one that is empty on purpose is written (empty)");
            texts[number] = {panel_text(entry->id), entry->place};
        } else if (!is_unused(number)) {
            problems.error(file, "text " + std::to_string(number) + " is missing");
        }
    }
    return texts;
}

/* What a translation must take over: the keys, the TAB that parts a title, printf conversions. */
static std::set<std::string_view> marks_of(std::string_view text)
{
    constexpr std::string_view fixed_marks[] = {"→", "←", "↕", "\t"};
    constexpr std::string_view flags = "-+#.0123456789hl";
    constexpr std::string_view conversions = "cdefgiopsuxX";
    std::set<std::string_view> marks;
    for (const std::string_view mark : fixed_marks) {
        if (text.find(mark) != std::string_view::npos)
            marks.insert(mark);
    }
    for (std::size_t at = text.find('%'); at < text.size(); at = text.find('%', at + 1)) {
        const std::size_t end = text.find_first_not_of(flags, at + 1);
        if (end < text.size() && conversions.find(text[end]) != std::string_view::npos)
            marks.insert(text.substr(at, end + 1 - at));
    }
    return marks;
}

/* The first of `marks` that is not among `others`, as messages name it; "" when all are. */
static std::string missing_mark(const std::set<std::string_view> &marks, const std::set<std::string_view> &others)
{
    for (const std::string_view mark : marks) {
        if (!others.contains(mark))
            return mark == "\t" ? "TAB" : std::string(mark);
    }
    return "";
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
    const std::set<std::string_view> english_marks = marks_of(english.id);
    const std::set<std::string_view> marks = marks_of(entry.text);
    if (const std::string mark = missing_mark(english_marks, marks); !mark.empty())
        return "lacks the " + mark + " of the English text";
    if (const std::string mark = missing_mark(marks, english_marks); !mark.empty())
        return "has a " + mark + " that the English text has not";
    return "";
}

PackTexts translated_texts(const std::string &file, const std::vector<PoEntry> &entries,
                           const std::vector<PoEntry> &english, Problems &problems)
{
    const EntryIndex index = index_entries(entries, problems);
    PackTexts texts;
    for (const PoEntry &original : english) {
        const std::optional<std::size_t> number = text_number(original.context);
        if (!number)
            continue;
        const PoEntry *entry = index[*number];
        if (entry == nullptr) {
            problems.error(file, "text " + std::to_string(*number) + " is missing; it is that of " + original.place);
            continue;
        }
        const std::string fault = translation_fault(*entry, original);
        if (!fault.empty())
            problems.error(entry->place, fault);
        texts[*number] = {panel_text(entry->text), entry->place};
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
