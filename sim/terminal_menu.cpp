#include "sim/terminal_menu.h"

#include "sim/places.h"
#include "sim/world.h"

#include <algorithm>
#include <cstdlib>

namespace sim {

std::vector<MenuRow> menu_rows(const State &state)
{
    std::vector<MenuRow> rows;
    for (const Input &input : router_inputs()) {
        if (input.place == &key_place)
            continue;
        const auto value = state.values.find(std::string(input.id));
        rows.push_back({RowKind::INPUT, std::string(input.group), std::string(input.id), std::string(input.label),
                        value == state.values.end() ? "Enter" : value->second});
    }
    for (const std::string &name : ready_worlds())
        rows.push_back({RowKind::WORLD, "Worlds", name, name, "Enter"});
    const std::string settings(SETTINGS_GROUP);
    rows.push_back({RowKind::NEW_SETTING, settings, "", "New KEY=VALUE", "Enter"});
    for (const auto &[key, value] : state.settings)
        rows.push_back({RowKind::INPUT, settings, "setting." + key, key, value});
    return rows;
}

static std::string stepped_choice(const Input &input, const std::string &value, int steps, bool wraps)
{
    const auto words = choices(input);
    const auto count = static_cast<int>(words.size());
    const auto found = std::ranges::find(words, value, &std::pair<std::string, std::string>::first);
    const int from = found == words.end() ? 0 : static_cast<int>(found - words.begin());
    const int to = wraps ? (from + steps + count) % count : std::clamp(from + steps, 0, count - 1);
    return words[static_cast<size_t>(to)].first;
}

std::string stepped(const Input &input, const std::string &value, int steps, bool wraps)
{
    if (input.kind == Kind::CHOICE)
        return stepped_choice(input, value, steps, wraps);
    if (input.kind != Kind::NUMBER)
        return value;
    const auto [least, most] = limits(input);
    const long long to = std::strtoll(value.c_str(), nullptr, 10) + steps;
    return std::to_string(std::clamp(to, static_cast<long long>(least), static_cast<long long>(most)));
}

} // namespace sim
