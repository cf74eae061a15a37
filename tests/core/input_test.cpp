#include "core/input.h"

#include "core/actions.h"
#include "core/screen_table.h"
#include "tests/support/test_root.h"

static constexpr int UNTOUCHED = 77;

struct InputCase {
    std::string action, event; // file contents
    int result, code, event_id;
};

TEST(Input, WordsAndEvents)
{
    const InputCase cases[] = {
        {"ok", "", 1, ACTION_OK, UNTOUCHED},
        {"menu\nok\n", "", 1, ACTION_MENU, UNTOUCHED},
        {"right\r\n", "", 1, ACTION_RIGHT, UNTOUCHED},
        {"", "", 0, UNTOUCHED, UNTOUCHED},
        {std::string("o\0k", 3), "", 0, UNTOUCHED, UNTOUCHED},
        {std::string(200, 'x') + "ok", "", 0, UNTOUCHED, UNTOUCHED},
        {"event\n", "lost link\n", 1, ACTION_EVENT, EVENT_LOST_LINK},
        {"event\n", "information\n", 1, ACTION_EVENT, EVENT_INFO},
        {"event\n", "lost\n", 0, UNTOUCHED, UNTOUCHED},
        {"event\n", "", 0, UNTOUCHED, UNTOUCHED},
        {"ok\n", "lost link\n", 1, ACTION_OK, UNTOUCHED},
    };
    const TestRoot root;
    for (const InputCase &test : cases) {
        root.write("/tmp/lcd/lcd_action", test.action);
        root.write("/tmp/lcd/lcd_event", test.event);
        lcd_action = UNTOUCHED;
        set_lcd_event_id(UNTOUCHED);
        EXPECT_EQ(read_lcd_input(), test.result) << test.action << '/' << test.event;
        EXPECT_EQ(lcd_action, test.code) << test.action << '/' << test.event;
        EXPECT_EQ(get_lcd_event_id(), test.event_id) << test.action << '/' << test.event;
    }
}
