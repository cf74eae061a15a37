/* Inputs of the simulated router as requests name them, and their values. */
#include "sim/inputs.h"

#include "fuzz/fuzz.h"
#include "sim/json.h"
#include "sim/settings.h"
#include "sim/text.h"

#include <algorithm>
#include <cctype>
#include <ctime>

static void check_texts(const std::string &text)
{
    const std::string line = sim::escaped(text);
    require(sim::unescaped(line) == text, "an escaped text comes back");
    for (std::string_view rest = line; !rest.empty(); rest.remove_prefix(sim::character_length(rest)))
        require(sim::character_length(rest) > 0 && rest[0] != '\n', "an escaped text is a line of UTF-8");
    const std::string json = sim::json_string(text);
    require(std::ranges::none_of(json, [](unsigned char c) { return c < 0x20; }), "JSON has no control characters");
    require(sim::unescaped(text).value_or("").size() <= text.size(), "escapes only shrink");
}

static void check_taken(const sim::Input &input, const std::string &value)
{
    switch (input.kind) {
    case sim::Kind::CHOICE:
        require(std::ranges::any_of(sim::choices(input), [&](const auto &pair) { return pair.first == value; }),
                "a choice is one of its words");
        break;
    case sim::Kind::NUMBER:
        require(std::stoul(value) >= sim::limits(input).first && std::stoul(value) <= sim::limits(input).second,
                "a number is within its limits");
        require(std::ranges::all_of(value, isdigit), "a number has digits alone");
        break;
    case sim::Kind::TEXT:
        require(sim::unescaped(value) && sim::unescaped(value)->size() <= sim::limits(input).second,
                "a text has its room");
        require(sim::unescaped(value)->find('\0') == std::string::npos, "a text has no NUL");
        break;
    case sim::Kind::TIME:
        require(sim::parse_time(sim::format_time(*sim::parse_time(value))) == sim::parse_time(value),
                "a time comes back");
        break;
    default:
        break;
    }
}

void fuzz(Input &in)
{
    const auto all = sim::router_inputs();
    const bool listed = in.number(0, 1) == 1;
    const size_t number = static_cast<size_t>(in.number(0, static_cast<int>(all.size()) - 1));
    const std::string id = listed ? std::string(all[number].id) : in.text();
    const std::string value = in.rest();
    check_texts(value);
    check_texts(id);
    const auto input = sim::find_input(id);
    if (!input)
        return;
    require(input->id == id, "an input is found by its id");
    require(input->group != sim::SETTINGS_GROUP || sim::is_setting_key(input->target), "a setting has a possible key");
    if (sim::fault_of(*input, value).empty())
        check_taken(*input, value);
}
