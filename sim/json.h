/* Writing JSON. */
#pragma once

#include <string>
#include <string_view>

namespace sim {

/* `text` as a JSON string, quotes included; bytes that are no UTF-8 become U+FFFD. */
std::string json_string(std::string_view text);

/* Pairs of a name and a text (a map, a list of pairs) as a JSON object. */
template <typename Pairs> std::string json_object(const Pairs &members)
{
    std::string json;
    for (const auto &[name, value] : members)
        json.append(json.empty() ? "" : ",").append(json_string(name)).append(":").append(json_string(value));
    return "{" + json + "}";
}

/* A list of texts as a JSON array. */
template <typename List> std::string json_array(const List &texts)
{
    std::string json;
    for (const auto &text : texts)
        json.append(json.empty() ? "" : ",").append(json_string(text));
    return "[" + json + "]";
}

} // namespace sim
