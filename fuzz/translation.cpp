/* The entries of translation files, made into a pack. */
#include "fuzz/fuzz.h"
#include "tools/charset.h"
#include "tools/composition.h"
#include "tools/language_pack.h"
#include "tools/panel_text.h"
#include "tools/problems.h"

#include <sstream>

static std::vector<PoEntry> take_entries(Input &in, const std::vector<PoEntry> &start)
{
    std::vector<PoEntry> entries = start;
    for (int count = in.number(0, 20); count > 0; count--) {
        const bool fuzzy = in.number(0, 9) == 0;
        PoEntry entry = {in.text(), in.text(), in.text(), fuzzy, "place"};
        const size_t number = static_cast<size_t>(in.number(0, 255));
        if (number < entries.size())
            entries[number] = entry;
        else
            entries.push_back(entry);
    }
    return entries;
}

void fuzz(Input &in)
{
    std::vector<PoEntry> made;
    for (int number = 0; number < TEXT_COUNT; number++)
        if (number != 2 && number != 107 && number != 115)
            made.push_back({std::to_string(number), "a", "b", false, "place"});
    std::ostringstream out;
    Problems problems(out);
    const std::vector<PoEntry> english = take_entries(in, made);
    const std::vector<PoEntry> entries = take_entries(in, english);
    const PackTexts texts[] = {english_texts("en", english, problems),
                               translated_texts("de", entries, english, problems)};
    for (const PackTexts &each : texts) {
        const std::string pack = pack_file("file", each, problems);
        require(problems.failed() || pack.size() <= 3 + LANGUAGE_PACK_BYTES, "a pack that is too large is a fault");
        for (const Composition &text : compose("{0,14-25} {1}", each))
            require(!text.shown().empty() && !text.numbers.empty(), "a composed text has a name");
    }
    const std::string text = in.rest();
    const auto characters = decode_utf8(text);
    require(!characters || encode_utf8(*characters) == text, "UTF-8 comes back");
    require(!visible_text(panel_text(text)).empty() || text.empty() || text == "(empty)", "a text can be shown");
}
