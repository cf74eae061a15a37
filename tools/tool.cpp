#include "tools/tool.h"

#include "tools/problems.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string_view>

static const Option &find_option(std::span<const Option> options, std::string_view name)
{
    const auto found = std::ranges::find(options, name, &Option::name);
    if (found == options.end())
        throw std::invalid_argument("unknown option " + std::string(name));
    return *found;
}

static void check_count(const Option &option, std::size_t count)
{
    const bool fits = option.values == Values::MANY ? count > 0 : count == (option.values == Values::ONE ? 1U : 0U);
    if (!fits)
        throw std::invalid_argument(std::string("wrong number of values for ") + option.name);
}

Arguments::Arguments(std::span<const char *const> words, std::span<const Option> options)
{
    for (std::size_t i = 0; i < words.size();) {
        const Option &option = find_option(options, words[i]);
        std::vector<std::string> values;
        for (++i; i < words.size() && !std::string_view(words[i]).starts_with("--"); ++i)
            values.emplace_back(words[i]);
        check_count(option, values.size());
        if (!values_.emplace(option.name, std::move(values)).second)
            throw std::invalid_argument(std::string(option.name) + " is given twice");
    }
    for (const Option &option : options) {
        if (option.required && !has(option.name))
            throw std::invalid_argument(std::string(option.name) + " is missing");
    }
}

int run_tool(const Tool &tool, int argc, const char *const *argv)
{
    Problems problems(std::cerr);
    try {
        const std::span words(argv, static_cast<std::size_t>(argc));
        tool.run(Arguments(words.subspan(1), tool.options), problems);
    } catch (const std::invalid_argument &error) {
        std::cerr << argv[0] << ": " << error.what() << "\nusage: " << tool.usage << '\n';
        return 2;
    } catch (const std::exception &error) {
        problems.error(argv[0], error.what());
    }
    return problems.failed() ? 1 : 0;
}
