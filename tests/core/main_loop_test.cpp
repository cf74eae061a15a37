#include "core/main_loop.h"

#include "core/actions.h"
#include "core/input.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "lang/language.h"
#include "tests/support/test_root.h"

#include <chrono>

class MainLoop : public testing::Test
{
protected:
    MainLoop()
    {
        root.link_assets();
        panel_start();
        switch_screen("menu");
    }

    const TestRoot root;
};

TEST_F(MainLoop, EventsThatEndSomethingAreATickElsewhere)
{
    root.write("/tmp/lcd/lcd_action", "event\n");
    const char *const ending[] = {"restore internet", "save config end", "setup wizard end"};
    for (int i = 0; i < 3; i++) {
        root.write("/tmp/lcd/lcd_event", ending[i]);
        lcd_input_handler(SIGUSR1);
        panel_pass();
        EXPECT_STREQ(current_screen->name, "menu");
        EXPECT_EQ(lcd_action, ACTION_TICK);
        EXPECT_EQ(get_lcd_event_id(), EVENT_RESTORE_INTERNET + 2 * i);
    }
}

TEST_F(MainLoop, FollowsAChangeOfLanguage)
{
    static int entered;
    entered = 0;
    screen_observer = [](const char *) { entered++; };
    lcd_language_handler(SIGUSR2);
    panel_pass();
    EXPECT_EQ(entered, 0) << "English counts as current from the start";
    load_language(0);
    replay.settings["language_lcd"] = "nonsense";
    lcd_language_handler(SIGUSR2);
    panel_pass();
    EXPECT_EQ(entered, 0);
    std::filesystem::remove(root.path("/sbin/lcd_ml"));
    root.write("/sbin/lcd_ml/_auto_lang_/_auto_language_de", "\xEF\xBB\xBF" + std::string(149, '\0'));
    replay.settings["language_lcd"] = "de";
    lcd_language_handler(SIGUSR2);
    printed(panel_pass); // every glyph is missing now
    EXPECT_EQ(get_current_language(), 3);
    EXPECT_EQ(entered, 1);
    screen_observer = nullptr;
}

/* A signal that arrives during the work between two sleeps must not wait for the sleep to end. */
TEST_F(MainLoop, NeverSleepsOverASignal)
{
    root.write("/tmp/lcd/lcd_action", "right\n");
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 200; i++) {
        raise(i % 2 ? SIGUSR1 : SIGUSR2);
        panel_wait();
        EXPECT_TRUE(input_pending || language_pending);
        panel_pass();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2)) << "200 sleeps of 100 ms take 20 s";
    panel_wait();
    EXPECT_FALSE(input_pending);
}
