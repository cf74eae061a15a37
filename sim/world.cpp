#include "sim/world.h"

#include "sim/files.h"
#include "sim/places.h"
#include "sim/router.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace sim {

static constexpr const char *ENDING = ".world";
static constexpr const char *BLANKS = " \t\r";
static constexpr uintmax_t LARGEST_FILE = 1 << 20; // bytes

std::vector<std::string> ready_worlds()
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(WORLDS_FOLDER))
        if (entry.path().extension() == ENDING)
            names.push_back(entry.path().stem());
    std::ranges::sort(names);
    return names;
}

static std::string list_of_worlds()
{
    std::string list;
    for (const std::string &name : ready_worlds())
        list += (list.empty() ? "" : ", ") + name;
    return list;
}

static fs::path find_world(const std::string &name)
{
    fs::path ready = fs::path(WORLDS_FOLDER) / (name + ENDING);
    if (name.find('/') == std::string::npos && fs::exists(ready))
        return ready;
    if (!fs::is_regular_file(name) || fs::file_size(name) > LARGEST_FILE)
        throw std::runtime_error(name + ": no file of a world, and none of the ready ones: " + list_of_worlds());
    return name;
}

/* `text` without blanks at its ends. */
static std::string trimmed(const std::string &text)
{
    const size_t begin = text.find_first_not_of(BLANKS), end = text.find_last_not_of(BLANKS);
    return begin == std::string::npos ? "" : text.substr(begin, end + 1 - begin);
}

/* The line of a world that `text` is; nothing when it says nothing. */
static std::optional<WorldLine> parse_line(const std::string &text)
{
    const std::string whole = trimmed(text);
    if (whole.empty() || whole[0] == '#')
        return std::nullopt;
    const size_t blank = std::min(whole.find_first_of(BLANKS), whole.size());
    return WorldLine{whole.substr(0, blank), trimmed(whole.substr(blank))};
}

/* What is wrong with `line`; "" when nothing is. */
static std::string fault_of_line(const WorldLine &line)
{
    const auto input = find_input(line.id);
    if (!input)
        return "no input " + line.id;
    if (input->kind == Kind::ACTION)
        return line.id + " is an action, which no world can begin with";
    const std::string fault = fault_of(*input, line.value);
    return fault.empty() ? "" : line.id + " " + fault + ", not \"" + line.value + "\"";
}

std::vector<WorldLine> read_world(const std::string &name)
{
    const fs::path path = find_world(name);
    const auto text = read_file(path);
    if (!text)
        throw std::runtime_error(path.string() + ": cannot be read");
    std::vector<WorldLine> world;
    std::map<std::string, size_t> line_of; // by the ids that have their value
    std::string faults;
    std::istringstream lines(*text);
    size_t number = 0;
    for (std::string each; std::getline(lines, each);) {
        ++number;
        const auto line = parse_line(each);
        if (!line)
            continue;
        const auto [first, is_first] = line_of.emplace(line->id, number);
        const std::string fault = is_first ? fault_of_line(*line)
                                           : line->id + " has its value in line " + std::to_string(first->second);
        if (!fault.empty())
            faults += (faults.empty() ? "" : "\n") + path.string() + ":" + std::to_string(number) + ": " + fault;
        world.push_back(*line);
    }
    if (!faults.empty())
        throw std::runtime_error(faults);
    return world;
}

void enter_world(Router &router, const std::vector<WorldLine> &world)
{
    for (const WorldLine &line : world)
        set_input(router, *find_input(line.id), line.value);
    commit_settings(router.root());
}

void change_world(Router &router, const std::vector<WorldLine> &world)
{
    std::map<std::string_view, std::string> values;
    for (const Input &input : router_inputs())
        if (input.initial && input.place != &speed_place)
            values[input.id] = input.initial;
    for (const WorldLine &line : world)
        values[line.id] = line.value;
    const State now = read_state(router);
    for (const auto &[id, value] : values) {
        const auto known = now.values.find(std::string(id));
        if (known == now.values.end() || known->second != value)
            set_input(router, *find_input(id), value);
    }
    commit_settings(router.root());
}

} // namespace sim
