#include "tools/composition.h"

#include "tools/panel_text.h"

#include <algorithm>
#include <charconv>

/* The numbers of "14-25,28". */
static std::vector<std::size_t> parse_numbers(std::string_view list)
{
    std::vector<std::size_t> numbers;
    const char *const end = list.data() + list.size();
    for (const char *at = list.data(); at < end;) {
        std::size_t first = 0;
        at = std::from_chars(at, end, first).ptr;
        std::size_t last = first;
        if (at < end && *at == '-')
            at = std::from_chars(at + 1, end, last).ptr;
        for (std::size_t number = first; number <= last; ++number)
            numbers.push_back(number);
        if (at < end)
            ++at;
    }
    return numbers;
}

static Composition with_text(const Composition &start, std::size_t number, const PackText &text)
{
    const std::string name = std::to_string(number);
    if (start.numbers.empty())
        return {start.text + text.text, name, text.place};
    return {start.text + text.text, start.numbers + ", " + name, start.place};
}

std::vector<Composition> compose(std::string_view pattern, const PackTexts &texts)
{
    std::vector<Composition> results(1);
    while (!pattern.empty()) {
        const std::size_t fixed = std::min(pattern.find('{'), pattern.size());
        for (Composition &result : results)
            result.text += pattern.substr(0, fixed);
        pattern.remove_prefix(fixed);
        if (pattern.empty())
            break;
        const std::size_t close = pattern.find('}');
        std::vector<Composition> longer;
        for (const std::size_t number : parse_numbers(pattern.substr(1, close - 1))) {
            for (const Composition &result : results)
                longer.push_back(with_text(result, number, texts[number]));
        }
        results = std::move(longer);
        pattern.remove_prefix(close + 1);
    }
    return results;
}

std::string Composition::shown() const
{
    return "text " + numbers + " (\"" + visible_text(text) + "\")";
}
