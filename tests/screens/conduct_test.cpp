#include "screens/conduct.h"

#include "core/actions.h"
#include "core/main_loop.h"
#include "gfx/widget.h"
#include "screens/router_event.h"
#include "status/power_save_mode.h"
#include "tests/support/test_root.h"

static std::string drawn; // the actions with which the screen under test has drawn

static void draw(int action)
{
    drawn += static_cast<char>('0' + action);
}

/* A screen of the test's own, and the real ones that it leads to. */
class ConductTest : public testing::Test
{
protected:
    ConductTest()
    {
        root.link_assets();
        drawn.clear();
        tick_count = 100;
        switch_screen("menu");
    }

    std::string act(int action, const ScreenEntry *previous = nullptr)
    {
        drawn.clear();
        run_conduct(conduct, previous, action);
        return drawn;
    }

    TestRoot root;
    LcdTimer idle, refresh;
    WidgetState state = {};
    Conduct conduct = {.idle_timer = &idle, .refresh_timer = &refresh, .draw = draw};
};

TEST_F(ConductTest, RedrawsByItsRefreshTimer)
{
    EXPECT_EQ(act(ACTION_ENTER), "0");
    tick_count = 105;
    EXPECT_EQ(act(ACTION_TICK), "");
    tick_count = 106;
    EXPECT_EQ(act(ACTION_TICK), "1");
    EXPECT_EQ(act(ACTION_TICK), "");
    conduct.refresh_timer = nullptr;
    tick_count = 200;
    EXPECT_EQ(act(ACTION_TICK), "");
}

TEST_F(ConductTest, MovesInItsOwnWay)
{
    struct UpDownCase {
        UpDown way;
        const char *at_once, *later; // drawn by the key right after entering, and by a tick 6 ticks after entering
    };
    const UpDownCase cases[] = {
        {UP_DOWN_DRAW, "2", "1"},
        {UP_DOWN_NOTHING, "", "1"},
        {UP_DOWN_REARM_AND_DRAW, "2", ""},
        {UP_DOWN_REFRESH, "", "1"},
    };
    for (const UpDownCase &test : cases) {
        conduct.up_down = test.way;
        tick_count = 100;
        act(ACTION_ENTER);
        tick_count = 103;
        EXPECT_EQ(act(ACTION_UP), test.at_once) << test.way;
        tick_count = 106;
        EXPECT_EQ(act(ACTION_TICK), test.later) << test.way;
    }
    tick_count = 200;
    EXPECT_EQ(act(ACTION_DOWN), "3") << "an expired timer lets the key draw";
}

TEST_F(ConductTest, EveryActionButATickPutsTheIdleTimeOff)
{
    for (int action = ACTION_ENTER; action <= ACTION_NONE + 1; action++) {
        idle = {};
        act(action);
        EXPECT_EQ(idle.duration, action == ACTION_TICK ? 0 : IDLE_TICKS) << action;
    }
}

TEST_F(ConductTest, GoesWhereItsTargetsSay)
{
    static const char *const items[] = {"help and tips", "Need more help", nullptr};
    conduct.left = "Internet not found";
    conduct.right = "Wireless not found";
    conduct.items = items;
    conduct.list_state = &state;
    const auto target = [this](int action) {
        switch_screen("network status");
        act(action);
        return std::string(current_screen->name);
    };
    EXPECT_EQ(target(ACTION_LEFT), "Internet not found");
    EXPECT_EQ(target(ACTION_RIGHT), "Wireless not found");
    EXPECT_EQ(target(ACTION_MENU), "menu");
    EXPECT_EQ(target(ACTION_NONE), "network status");
    state.current = 1;
    EXPECT_EQ(target(ACTION_OK), "Need more help");
    for (const int beyond : {2, 99, -1}) {
        state.current = beyond;
        EXPECT_EQ(target(ACTION_OK), "network status") << "the list has shrunk while it was shown";
    }
    conduct.ok = "can not connect";
    EXPECT_EQ(target(ACTION_OK), "can not connect");
    conduct.choose_ok = []() -> const char * { return nullptr; };
    EXPECT_EQ(target(ACTION_OK), "network status");
    conduct.menu_key = false;
    EXPECT_EQ(target(ACTION_MENU), "network status");
    set_lcd_event_id(EVENT_LOST_LINK);
    EXPECT_EQ(target(ACTION_EVENT), "router event");
}

TEST_F(ConductTest, OpensAListWhereTheUserComesFrom)
{
    static const char *const items[] = {"a", "b", "c", nullptr};
    conduct.items = items;
    conduct.list_state = &state;
    const ScreenEntry from_c = {nullptr, "c"}, from_elsewhere = {nullptr, "menu"};
    state.cursorRow = 7;
    act(ACTION_ENTER, &from_elsewhere);
    EXPECT_EQ(state.pendingSelection, 0);
    EXPECT_EQ(state.cursorRow, 7);
    act(ACTION_ENTER, nullptr);
    EXPECT_EQ(state.cursorRow, 7);
    act(ACTION_ENTER, &from_c);
    EXPECT_EQ(state.pendingSelection, 2);
    EXPECT_EQ(state.cursorRow, 0) << "the record is reset";
}

TEST_F(ConductTest, TheWizardPageKnowsOnlyItsEvents)
{
    set_lcd_event_id(EVENT_SETUP_WIZARD_START);
    switch_screen("router event");
    for (int event = EVENT_LOST_LINK; event <= EVENT_SETUP_WIZARD_START; event++) {
        set_lcd_event_id(event);
        eventHandlers[2](ACTION_EVENT);
        EXPECT_STREQ(current_screen->name, "router event") << event;
    }
    set_lcd_event_id(99);
    eventHandlers[2](ACTION_EVENT);
    EXPECT_STREQ(current_screen->name, "router event");
}

TEST(PowerSaveModeDeathTest, OnlyTheWholeWordOnCounts)
{
    /* The setting is cached for the run: each value needs a process of its own, made before any other test reads it. */
    const std::pair<const char *, int> cases[] = {{"on", 0}, {"once", 1}, {"off", 1}, {"", 1}, {"ON", 1}};
    for (const auto &[value, mode] : cases)
        EXPECT_EXIT(
            {
                replay.settings["lcd_power_save_mode"] = value;
                exit(get_lcd_power_save_mode());
            },
            testing::ExitedWithCode(mode), "")
            << value;
}
