/* Every input of the router: what it is called, which values it takes and where they go. The page, the HTTP interface,
 * the worlds and the tests are made from this one list. */
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sim {

struct Place;

enum class Kind {
    CHOICE,  // one of some words
    NUMBER,  // decimal
    TEXT,    // escaped (sim/text.h)
    ADDRESS, // "203.0.113.25"
    TIME,    // "2024-03-10T12:30:00"
    ACTION,  // no value: something happens
};

struct Input {
    std::string_view id;
    std::string_view group;
    std::string_view label;
    Kind kind;
    /* CHOICE: the words, each with "=" and what goes to its place where that differs ("on=7 off=0"); NUMBER: least and
     * greatest ("0..999"); TEXT: the most bytes. */
    std::string_view range;
    const Place *place;
    std::string_view target;       // which file, settings key ... of the place
    const char *initial = nullptr; // in a router that works; null: none is given to it
};

constexpr std::string_view SETTINGS_GROUP = "Settings"; // of the inputs "setting.KEY", which are not on the list

/* The list, group by group. */
std::span<const Input> router_inputs();

/* The input `id`. "setting.KEY" is any key of the settings store; its text is that of `id`. */
std::optional<Input> find_input(std::string_view id);

/* The word and what goes to the place of each of a CHOICE's values. */
std::vector<std::pair<std::string, std::string>> choices(const Input &input);

/* Least and greatest of a NUMBER; 0 and the most bytes of a TEXT. */
std::pair<unsigned long, unsigned long> limits(const Input &input);

/* What is wrong with `value` for `input`, to be said behind its id ("takes ..."); "" when nothing is. */
std::string fault_of(const Input &input, std::string_view value);

/* A TIME in seconds since the epoch; nothing when it is none between 1970 and 2037. */
std::optional<time_t> parse_time(std::string_view text);
std::string format_time(time_t seconds);

} // namespace sim
