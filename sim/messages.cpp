#include "sim/messages.h"

#include "sim/json.h"
#include "sim/places.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace sim {

static const char *truth(bool value)
{
    return value ? "true" : "false";
}

static const char *name_of(Kind kind)
{
    switch (kind) {
    case Kind::CHOICE:
        return "choice";
    case Kind::NUMBER:
        return "number";
    case Kind::TEXT:
        return "text";
    case Kind::ADDRESS:
        return "address";
    case Kind::TIME:
        return "time";
    case Kind::ACTION:
        break;
    }
    return "action";
}

/* The values that `input` takes, as members of its object. */
static std::string range_json(const Input &input)
{
    if (input.kind == Kind::CHOICE) {
        std::vector<std::string> words;
        for (const auto &[word, stored] : choices(input))
            words.push_back(word);
        return ",\"choices\":" + json_array(words);
    }
    if (input.kind != Kind::NUMBER && input.kind != Kind::TEXT)
        return "";
    const auto [least, most] = limits(input);
    if (input.kind == Kind::TEXT)
        return ",\"bytes\":" + std::to_string(most);
    return ",\"least\":" + std::to_string(least) + ",\"most\":" + std::to_string(most);
}

static std::string input_json(const Input &input, const State &state)
{
    const std::string goes_to = input.place->name + std::string(input.target.empty() ? "" : " ").append(input.target);
    std::string json = "{\"id\":" + json_string(input.id) + ",\"group\":" + json_string(input.group) +
                       ",\"label\":" + json_string(input.label) + ",\"kind\":\"" + name_of(input.kind) + "\"" +
                       range_json(input) + ",\"place\":" + json_string(goes_to);
    const auto value = state.values.find(std::string(input.id));
    if (value != state.values.end())
        json += ",\"value\":" + json_string(value->second);
    return json + "}";
}

std::string inputs_json(uint64_t tick, const State &state)
{
    std::string list;
    for (const Input &input : router_inputs())
        list += (list.empty() ? "\n" : ",\n") + input_json(input, state);
    return "{\"tick\":" + std::to_string(tick) + ",\"inputs\":[" + list + "\n],\n\"settings\":" +
           json_object(state.settings) + "}\n";
}

std::string state_json(uint64_t tick, unsigned speed, bool lit, const State &state)
{
    return "{\"tick\":" + std::to_string(tick) + ",\"speed\":" + std::to_string(speed) + ",\"lit\":" + truth(lit) +
           ",\"values\":" + json_object(state.values) + ",\"settings\":" + json_object(state.settings) + "}\n";
}

static std::string hexadecimal(const Pixels &pixels)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : pixels)
        text += {DIGITS[byte >> 4], DIGITS[byte & 15]};
    return text;
}

static std::string event(const char *name, const std::string &json)
{
    return "event: " + std::string(name) + "\ndata: " + json + "\n\n";
}

/* The members that tell what a picture looks like. */
static std::string look_json(const Picture &picture)
{
    return std::string("\"lit\":") + truth(picture.lit) + ",\"pixels\":\"" + hexadecimal(picture.pixels) + "\"";
}

std::string frame_event(const Picture &picture)
{
    return event("frame", "{\"tick\":" + std::to_string(picture.tick) + "," + look_json(picture) + "}");
}

std::string change_json(const Picture &picture, uint64_t tick, bool changed)
{
    return "{\"tick\":" + std::to_string(tick) + ",\"changed\":" + truth(changed) +
           ",\"picture\":" + std::to_string(picture.number) + "," + look_json(picture) + "}\n";
}

static const char *name_of(Happened kind)
{
    switch (kind) {
    case Happened::INPUT:
        return "input";
    case Happened::PRINT:
        return "print";
    case Happened::COMMAND:
        return "command";
    case Happened::SETTING:
        return "setting";
    case Happened::FRAME:
        return "frame";
    case Happened::ROUTER:
        break;
    }
    return "router";
}

std::string happenings_json(const std::vector<Happening> &happenings)
{
    std::string list;
    for (const Happening &each : happenings)
        list += (list.empty() ? "{\"id\":" : ",{\"id\":") + std::to_string(each.id) +
                ",\"tick\":" + std::to_string(each.tick) + ",\"kind\":\"" + name_of(each.kind) +
                "\",\"text\":" + json_string(each.text) + ",\"picture\":" + std::to_string(each.picture) + "}";
    return "[" + list + "]";
}

std::string happenings_event(const std::vector<Happening> &happenings)
{
    return event("happenings", happenings_json(happenings));
}

std::string state_event(uint64_t tick, const State &before, const State &now)
{
    std::map<std::string, std::string> changed;
    std::ranges::set_difference(now.values, before.values, std::inserter(changed, changed.end()));
    std::string json = "{\"tick\":" + std::to_string(tick) + ",\"values\":" + json_object(changed);
    if (now.settings != before.settings)
        json += ",\"settings\":" + json_object(now.settings);
    return event("state", json + "}");
}

} // namespace sim
