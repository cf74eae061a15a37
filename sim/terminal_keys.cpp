/* What the keys of the terminal do. */
#include "sim/terminal.h"

#include "sim/places.h"
#include "sim/text.h"
#include "sim/world.h"

#include <algorithm>

namespace sim {

static constexpr const char *MENU_INPUT = "key.menu", *STEP_INPUT = "clock.step", *SETTING_PREFIX = "setting.";

static constexpr std::pair<Key, const char *> panel_keys[] = {
    {Key::UP, "key.up"},       {Key::DOWN, "key.down"}, {Key::LEFT, "key.left"},
    {Key::RIGHT, "key.right"}, {Key::ENTER, "key.ok"},  {Key::ESCAPE, MENU_INPUT},
};

void Terminal::take_stroke(const Stroke &stroke)
{
    if (stroke.key == Key::OTHER)
        return;
    drawn_ = false;
    view_.message.clear();
    if (stroke.key == Key::INTERRUPT)
        end();
    else if (stroke.key == Key::STOP)
        stop();
    else if (view_.help)
        view_.help = false;
    else if (view_.typing)
        take_typing_stroke(stroke);
    else if (!take_common_stroke(stroke)) {
        if (view_.in_menu)
            take_menu_stroke(stroke);
        else
            take_panel_stroke(stroke);
    }
}

/* A key that means the same at the panel and among the inputs. False when it is none. */
bool Terminal::take_common_stroke(const Stroke &stroke)
{
    if (stroke.key == Key::TAB)
        view_.in_menu = !view_.in_menu;
    else if (stroke.character == "q" || stroke.character == "Q")
        end();
    else if (stroke.character == "?")
        view_.help = true;
    else if (stroke.character == " ")
        pause();
    else if (stroke.character == "+" || stroke.character == "-")
        step(SPEED_INPUT, stroke.character == "+" ? 1 : -1, false);
    else if (stroke.character == ".")
        give(STEP_INPUT, "");
    else
        return false;
    return true;
}

void Terminal::take_panel_stroke(const Stroke &stroke)
{
    for (const auto &[key, id] : panel_keys)
        if (key == stroke.key)
            give(id, "");
    if (stroke.character == "m" || stroke.character == "M")
        give(MENU_INPUT, "");
}

void Terminal::take_menu_stroke(const Stroke &stroke)
{
    switch (stroke.key) {
    case Key::UP:
    case Key::DOWN:
        move(stroke.key == Key::UP ? -1 : 1);
        break;
    case Key::HOME:
    case Key::END:
        view_.selected = stroke.key == Key::HOME ? 0 : view_.rows.size() - 1;
        break;
    case Key::PAGE_UP:
    case Key::PAGE_DOWN:
        move_group(stroke.key == Key::PAGE_UP ? -1 : 1);
        break;
    case Key::LEFT:
    case Key::RIGHT:
        if (selected_input())
            step(row().id, stroke.key == Key::LEFT ? -1 : 1, true);
        break;
    case Key::ENTER:
        enter();
        break;
    case Key::DELETE:
        remove();
        break;
    case Key::ESCAPE:
        view_.in_menu = false;
        break;
    default:
        break;
    }
}

void Terminal::move(int rows)
{
    const auto to = static_cast<std::ptrdiff_t>(view_.selected) + rows;
    view_.selected = static_cast<size_t>(std::clamp<std::ptrdiff_t>(to, 0, std::ssize(view_.rows) - 1));
}

/* To the first row of the group, then to that of the next one. */
void Terminal::move_group(int direction)
{
    const auto begins_group = [this](size_t i) { return i == 0 || view_.rows[i].group != view_.rows[i - 1].group; };
    const size_t end = direction < 0 ? 0 : view_.rows.size() - 1;
    while (view_.selected != end) {
        move(direction);
        if (begins_group(view_.selected))
            break;
    }
}

/* Does what the selected row is for: an action, the next value, a value to be typed. */
void Terminal::enter()
{
    const auto input = selected_input();
    if (row().kind == RowKind::WORLD)
        tasks_.ask([this, name = row().id] {
            const std::vector<WorldLine> world = read_world(name);
            router_.note_input("world " + name);
            change_world(router_, world);
        });
    else if (!input)
        view_.typing = {row(), ""};
    else if (input->kind == Kind::ACTION)
        give(row().id, "");
    else if (input->kind == Kind::CHOICE)
        step(row().id, 1, true);
    else
        view_.typing = {row(), row().value};
}

void Terminal::remove()
{
    const auto input = selected_input();
    if (!input || input->group != SETTINGS_GROUP) {
        view_.message = "Only a key of the settings store can be removed";
        return;
    }
    tasks_.ask([this, id = row().id, key = std::string(input->target)] {
        router_.note_input(id + " removed");
        router_.change_setting(key, std::nullopt);
    });
}

/* Without its last character. */
static std::string shortened(const std::string &text)
{
    size_t end = text.size();
    while (end > 0 && (static_cast<unsigned char>(text[--end]) & 0xc0) == 0x80)
        continue;
    return text.substr(0, end);
}

void Terminal::take_typing_stroke(const Stroke &stroke)
{
    std::string &text = view_.typing->text;
    if (stroke.key == Key::ENTER)
        finish_typing();
    else if (stroke.key == Key::ESCAPE)
        view_.typing.reset();
    else if (stroke.key == Key::BACKSPACE)
        text = shortened(text);
    else if (stroke.key == Key::DELETE)
        text.clear();
    else
        text += stroke.character;
}

void Terminal::finish_typing()
{
    auto [row, text] = *view_.typing;
    if (row.kind == RowKind::NEW_SETTING) {
        const size_t equals = std::min(text.find('='), text.size());
        row.id = SETTING_PREFIX + text.substr(0, equals);
        text.erase(0, equals + 1);
    }
    const auto input = find_input(row.id);
    const std::string fault = input ? fault_of(*input, text) : "takes KEY=VALUE";
    if (!fault.empty()) {
        view_.message = row.label + " " + fault;
        return;
    }
    give(row.id, text);
    view_.typing.reset();
}

} // namespace sim
