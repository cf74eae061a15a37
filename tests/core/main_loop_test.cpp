#include "core/main_loop.h"

#include "core/actions.h"
#include "core/input.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "lang/language.h"
#include "tests/support/test_root.h"

#include <chrono>

static void announce(const TestRoot &root, const char *event)
{
    root.write("/tmp/lcd/lcd_action", "event\n");
    root.write("/tmp/lcd/lcd_event", event);
    lcd_input_handler(SIGUSR1);
    panel_pass();
}

TEST(MainLoop, EventsThatEndSomethingAreATickElsewhere)
{
    const TestRoot root;
    root.link_assets();
    panel_start();
    const char *const ending[] = {"restore internet", "save config end", "setup wizard end"};
    for (int i = 0; i < 3; i++) {
        switch_screen("menu");
        announce(root, ending[i]);
        EXPECT_STREQ(current_screen->name, "menu");
        EXPECT_EQ(lcd_action, ACTION_TICK);
        EXPECT_EQ(get_lcd_event_id(), EVENT_RESTORE_INTERNET + 2 * i);
    }
    announce(root, "lost internet");
    EXPECT_STREQ(current_screen->name, "router event");
    announce(root, "restore internet");
    EXPECT_STREQ(current_screen->name, "network status");
    EXPECT_EQ(lcd_action, ACTION_EVENT);
}

TEST(MainLoop, FollowsAChangeOfLanguage)
{
    const TestRoot root;
    root.link_assets();
    panel_start();
    switch_screen("menu");
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
TEST(MainLoop, NeverSleepsOverASignal)
{
    const TestRoot root;
    root.link_assets();
    panel_start();
    switch_screen("menu");
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

TEST(MainLoop, ChecksTheCompanionsEachMinuteButNotWithAKey)
{
    const TestRoot root;
    root.link_assets();
    panel_start();
    switch_screen("menu");
    replay.trace = true;
    const auto pass_at = [](uint32_t tick) {
        tick_count = tick;
        return printed(panel_pass).find(" pipe /bin/ps") != std::string::npos;
    };
    root.write("/tmp/lcd/lcd_action", "right\n");
    EXPECT_FALSE(pass_at(600));
    lcd_input_handler(SIGUSR1);
    EXPECT_FALSE(pass_at(601));
    EXPECT_TRUE(pass_at(602));
    EXPECT_FALSE(pass_at(602 + 600));
    EXPECT_TRUE(pass_at(602 + 601));
}

TEST(ScreenTable, ReportsUnknownNamesAndIgnoresNull)
{
    const TestRoot root;
    root.link_assets();
    switch_screen("menu");
    EXPECT_EQ(printed([] { switch_screen("Menu"); }), "lcd switch screen failed, current menu, switch to Menu\n");
    EXPECT_EQ(printed([] { switch_screen(nullptr); }), "");
    EXPECT_STREQ(current_screen->name, "menu");
}
