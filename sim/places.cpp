#include "sim/places.h"

#include "sim/control.h"
#include "sim/files.h"
#include "sim/processes.h"
#include "sim/router.h"
#include "sim/router_files.h"
#include "sim/text.h"

#include <csignal>
#include <sstream>

namespace sim {

static constexpr const char *INTERFACES_FILE = "etc/interfaces";
static constexpr const char *BEHIND_ADDRESS = " 255.255.255.0 00:1f:33:8a:5f:2a 1500\n";

/* The line that the file `name` begins with; "" when there is none. */
static std::string first_line(const Router &router, const std::string &name)
{
    const std::string text = read_file(router.root() / name).value_or("");
    return text.substr(0, text.find('\n'));
}

/* What follows the first word of a line. */
static std::string behind_word(const std::string &line)
{
    const size_t blank = line.find(' ');
    return blank == std::string::npos ? "" : line.substr(blank + 1);
}

static std::string get_setting(const View &view, const Input &input)
{
    const auto setting = view.settings.find(std::string(input.target));
    return setting == view.settings.end() ? "" : setting->second;
}

static void set_setting(Router &router, const Input &input, const std::string &value)
{
    router.change_setting(std::string(input.target), value);
}

const Place setting_place = {"settings key", get_setting, set_setting};

const Place language_place = {
    "settings key and SIGUSR2:", get_setting,
    [](Router &router, const Input &input, const std::string &value) {
        set_setting(router, input, value);
        router.announce_language();
    }};

static std::string status_source(const Input &input)
{
    return std::string(STATUS_SOURCE) + "/" + std::string(input.target);
}

const Place status_place = {
    "status file",
    [](const View &view, const Input &input) { return behind_word(first_line(view.router, status_source(input))); },
    [](Router &router, const Input &input, const std::string &value) {
        router.write(status_source(input), std::string(input.target) + " " + value + "\n");
    }};

const Place line_place = {
    "file", [](const View &view, const Input &input) { return first_line(view.router, std::string(input.target)); },
    [](Router &router, const Input &input, const std::string &value) {
        const std::string name(input.target);
        if (value.empty())
            router.remove(name);
        else
            router.write(name, value + "\n");
    }};

const Place marker_place = {
    "existence of the file",
    [](const View &view, const Input &input) {
        return std::string(read_file(view.router.root() / input.target) ? "on" : "off");
    },
    [](Router &router, const Input &input, const std::string &value) {
        const std::string name(input.target);
        if (value == "on")
            router.write(name, "");
        else
            router.remove(name);
    }};

const Place interface_place = {
    "network interface",
    [](const View &view, const Input &) {
        const std::string rest = behind_word(first_line(view.router, INTERFACES_FILE));
        return rest.substr(0, rest.find(' '));
    },
    [](Router &router, const Input &input, const std::string &value) {
        router.write(INTERFACES_FILE, std::string(input.target) + " " + value + BEHIND_ADDRESS);
    }};

static std::string get_parameter(const View &view, const Input &input)
{
    return view.router.parameters().text(input.id);
}

const Place parameter_place = {
    "the simulation itself", get_parameter,
    [](Router &router, const Input &input, const std::string &value) { router.parameters().set(input.id, value); }};

const Place speed_place = {
    "the simulation's clock",
    [](const View &view, const Input &) { return std::to_string(view.router.clock().speed()); },
    [](Router &router, const Input &, const std::string &value) {
        router.clock().set_speed(static_cast<unsigned>(std::stoul(value)));
    }};

const Place ticks_place = {
    "the simulation's clock, ticks:", nullptr, [](Router &router, const Input &input, const std::string &) {
        router.clock().advance(static_cast<unsigned>(std::stoul(std::string(input.target))));
    }};

const Place wall_clock_place = {
    "the system's clock", [](const View &view, const Input &) { return format_time(view.router.time()); },
    [](Router &router, const Input &, const std::string &value) { router.set_time(*parse_time(value)); }};

const Place key_place = {
    "key", nullptr, [](Router &router, const Input &input, const std::string &) { router.press(input.target); }};

const Place event_place = {
    "event", nullptr, [](Router &router, const Input &input, const std::string &) { router.announce(input.target); }};

const Place upgrade_place = {
    "firmware", nullptr, [](Router &router, const Input &, const std::string &) { router.begin_upgrade(); }};

const Place picture_fault_place = {
    "the daemon's files", get_parameter, [](Router &router, const Input &input, const std::string &value) {
        router.remove_picture(value == input.initial ? "" : value);
        router.parameters().set(input.id, value);
    }};

const Place pack_fault_place = {
    "the daemon's files", get_parameter, [](Router &router, const Input &input, const std::string &value) {
        router.cut_pack(value != input.initial);
        router.parameters().set(input.id, value);
    }};

/* The daemon itself makes and removes the file for each frame: it tells nothing. */
const Place lock_fault_place = {
    "file", get_parameter, [](Router &router, const Input &input, const std::string &value) {
        if (value == input.initial)
            router.remove(std::string(input.target));
        else
            router.write(std::string(input.target), "");
        router.parameters().set(input.id, value);
    }};

const Place kill_place = {
    "process", nullptr, [](Router &router, const Input &input, const std::string &) {
        for (const RouterProcess &process : router_processes(router.root()))
            if (process.program == input.target)
                kill(process.pid, SIGKILL);
    }};

/* It is the router's own thread that reboots it. */
const Place reboot_place = {
    "program reboot", nullptr,
    [](Router &router, const Input &, const std::string &) { tell_simulator(router.root(), "reboot"); }};

/* `from` as it stands in the other column of the pairs; itself where it stands in none. */
static std::string translated(const Input &input, std::string_view from, bool to_place)
{
    for (const auto &[word, stored] : choices(input))
        if ((to_place ? word : stored) == from)
            return to_place ? stored : word;
    return std::string(from);
}

State read_state(Router &router)
{
    const Settings settings = read_settings(router.root());
    State state;
    for (const Input &input : router_inputs()) {
        if (!input.place->get)
            continue;
        const std::string stored = input.place->get({router, settings}, input);
        const bool is_choice = input.kind == Kind::CHOICE;
        state.values.emplace(input.id, escaped(is_choice ? translated(input, stored, false) : stored));
    }
    for (const auto &[key, value] : settings)
        state.settings.emplace(key, escaped(value));
    return state;
}

/* `value` as it is to stand in its place. */
static std::string stored_form(const Input &input, std::string_view value)
{
    return input.kind == Kind::CHOICE ? translated(input, value, true) : unescaped(value).value_or("");
}

void set_input(Router &router, const Input &input, std::string_view value)
{
    input.place->set(router, input, stored_form(input, value));
}

Settings default_settings()
{
    Settings defaults;
    for (const Input &input : router_inputs())
        if ((input.place == &setting_place || input.place == &language_place) && input.initial)
            defaults.emplace(input.target, stored_form(input, input.initial));
    return defaults;
}

} // namespace sim
