#include "core/input.h"

#include "core/actions.h"
#include "core/file.h"
#include "core/screen_table.h"

#include <array>
#include <cstring>

static constexpr const char *ACTION_FILE = "/tmp/lcd/lcd_action";
static constexpr const char *EVENT_FILE = "/tmp/lcd/lcd_event";

struct ActionWord {
    int code;
    const char *word;
};

static const ActionWord action_table[] = {
    {ACTION_UP, "up"}, {ACTION_DOWN, "down"}, {ACTION_LEFT, "left"},   {ACTION_RIGHT, "right"},
    {ACTION_OK, "ok"}, {ACTION_MENU, "menu"}, {ACTION_EVENT, "event"}, {ACTION_NONE, nullptr},
};

/* Indexed by EventId. */
static const char *const event_words[] = {
    "lost link",       "lost internet",      "restore internet", "save config start",
    "save config end", "setup wizard start", "setup wizard end", "info",
};

volatile sig_atomic_t input_pending;
volatile sig_atomic_t language_pending;
int lcd_action = ACTION_NONE;

using InputLine = std::array<char, 100>;

void lcd_input_handler(int)
{
    input_pending = 1;
}

void lcd_language_handler(int)
{
    language_pending = 1;
}

static bool begins_with(const InputLine &line, const char *word)
{
    return strncmp(line.data(), word, strlen(word)) == 0;
}

/* The id of the event announced in the event file; EVENT_NONE when there is none that is known. */
static int read_event()
{
    InputLine line;
    if (!read_first_line(EVENT_FILE, line))
        return EVENT_NONE;
    int id = 0;
    while (id < EVENT_NONE && !begins_with(line, event_words[id]))
        id++;
    return id;
}

int read_lcd_input()
{
    InputLine line;
    if (!read_first_line(ACTION_FILE, line))
        return 0;
    const ActionWord *row = action_table;
    while (row->word && !begins_with(line, row->word))
        row++;
    if (!row->word)
        return 0;
    if (row->code == ACTION_EVENT) {
        const int id = read_event();
        if (id == EVENT_NONE)
            return 0;
        set_lcd_event_id(id);
    }
    lcd_action = row->code;
    return 1;
}
