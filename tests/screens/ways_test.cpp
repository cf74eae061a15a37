/* Where keys and events lead from screen to screen, and two minutes without one. */
#include "core/actions.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "tests/support/test_root.h"

#include <algorithm>
#include <vector>

static constexpr const char *HOME = "network status", *DARK = "LCD power saving", *EVENT = "router event";
static constexpr unsigned TWO_MINUTES = 1200;

static const std::vector<std::string> ring = {
    HOME,           "total speedometer", "upload-download speedometer", "computer speed", "computer usage",
    "guest access", "current time"};

/* Lists and what their items lead to. */
static const std::pair<std::string, std::vector<std::string>> tree[] = {
    {"menu", {"security options", "wireless radio", "router information", "help and tips", "LCD power save"}},
    {"help and tips", {"Internet not found", "Wireless not found", "can not connect", "Need more help"}},
    {"LCD power save", {"power save confirm", "power save help"}},
    {"security options", {"guest access menu", "WPS setup", "security help"}},
    {"guest access menu", {"ga confirm", "ga login info", "ga help"}},
    {"WPS setup", {"WPS start", "wps on-off", "wps help"}},
    {"wireless radio", {"wireless switch", "show wireless info", "wireless radio feature"}},
};

static const std::vector<std::string> read_pages = {
    "router information", "Internet not found",     "Wireless not found",   "can not connect", "Need more help",
    "power save help",    "security help",          "ga login info",        "ga help",         "wps help",
    "show wireless info", "wireless radio feature", "WPS wireless disabled"};

static constexpr const char *BACK = "help and tips", *STAY = ""; // for pages of events that were entered from BACK

/* Pages of events, and where the next event leads: lost link and Internet, restored, save starts and ends, wizard
 * starts and ends, info. */
static const struct {
    EventId shown;
    const char *ok, *menu, *two_minutes;
    const char *event[EVENT_NONE];
} event_pages[] = {
    {EVENT_LOST_LINK, HOME, "menu", STAY, {STAY, EVENT, HOME, STAY, STAY, EVENT, STAY, EVENT}},
    {EVENT_LOST_INTERNET, HOME, "menu", STAY, {EVENT, STAY, HOME, STAY, STAY, EVENT, STAY, EVENT}},
    {EVENT_SAVE_CONFIG_START, STAY, "menu", BACK, {STAY, STAY, STAY, STAY, BACK, EVENT, STAY, EVENT}},
    {EVENT_SETUP_WIZARD_START, HOME, "menu", HOME, {STAY, STAY, STAY, STAY, STAY, STAY, HOME, EVENT}},
    {EVENT_INFO, STAY, STAY, HOME, {STAY, STAY, STAY, STAY, STAY, STAY, STAY, STAY}},
};

static std::string entered; // the last screen, even if it is the same again

/* A router that is online, whose radio and WPS are on, and which may let guests in. */
class Ways : public testing::Test
{
protected:
    Ways()
    {
        root.link_assets();
        root.write("/tmp/lcd/network_status/internet", "internet on\n");
        root.write("/tmp/lcd/network_status/wan", "wan on\n");
        replay.settings = {{"wifi_dot11_mode", "7"}, {"wifi_wsc_enable", "1"}, {"wifi_if_on", "0"}};
    }

    static void enter(const std::string &screen)
    {
        switch_screen(HOME);
        switch_screen(screen.c_str());
    }
    static std::string act(int action)
    {
        current_screen->handler(nullptr, action);
        return current_screen->name;
    }
    static std::string wait(unsigned ticks)
    {
        tick_count += ticks;
        return act(ACTION_TICK);
    }
    static std::string announce(int event)
    {
        set_lcd_event_id(event);
        return act(ACTION_EVENT);
    }

    const TestRoot root;
};

TEST_F(Ways, LeadRoundTheStatusScreens)
{
    for (size_t i = 0; i < ring.size(); i++) {
        SCOPED_TRACE(ring[i]);
        enter(ring[i]);
        for (const int action : {ACTION_UP, ACTION_DOWN, ACTION_OK})
            EXPECT_EQ(act(action), ring[i]);
        EXPECT_EQ(act(ACTION_RIGHT), ring[(i + 1) % ring.size()]);
        EXPECT_EQ(act(ACTION_LEFT), ring[i]);
        EXPECT_EQ(act(ACTION_MENU), "menu");
    }
}

TEST_F(Ways, LeadDownTheMenuAndBack)
{
    for (const auto &[list, items] : tree)
        for (size_t i = 0; i < items.size(); i++) {
            SCOPED_TRACE(list + ", " + items[i]);
            enter(list);
            EXPECT_EQ(act(ACTION_RIGHT), list);
            for (size_t down = 0; down < i; down++)
                act(ACTION_DOWN);
            EXPECT_EQ(act(ACTION_OK), items[i]);
            if (items[i] == "WPS start")
                continue;
            EXPECT_EQ(act(ACTION_LEFT), list);
            EXPECT_EQ(act(ACTION_OK), items[i]) << "it is highlighted again";
            act(ACTION_MENU);
            EXPECT_EQ(act(ACTION_MENU), "menu");
            EXPECT_EQ(act(ACTION_OK), tree[0].second[0]) << "the menu key opens the menu anew";
        }
    enter("menu");
    EXPECT_EQ(act(ACTION_LEFT), HOME);
}

TEST_F(Ways, EndAtPagesThatAreOnlyRead)
{
    for (const std::string &page : read_pages) {
        enter(page);
        EXPECT_EQ(act(ACTION_RIGHT), page);
        EXPECT_EQ(act(ACTION_OK), page);
    }
}

TEST_F(Ways, LeadToWpsOnlyWithTheRadioOn)
{
    replay.settings["wifi_dot11_mode"] = "0";
    enter("security options");
    act(ACTION_DOWN);
    EXPECT_EQ(act(ACTION_OK), "WPS wireless disabled");
    EXPECT_EQ(act(ACTION_LEFT), "security options");
    replay.settings["wifi_dot11_mode"] = "7";
    EXPECT_EQ(act(ACTION_OK), "WPS setup") << "its item is highlighted again";
}

TEST_F(Ways, LeadFromThePagesOfEvents)
{
    screen_observer = [](const char *name) { entered = name; };
    for (const auto &page : event_pages) {
        SCOPED_TRACE(page.shown);
        const auto expect = [&page](const std::string &target, auto step) {
            enter(BACK);
            EXPECT_EQ(announce(page.shown), EVENT);
            entered = STAY;
            step();
            EXPECT_EQ(entered, target);
        };
        expect(STAY, [] { act(ACTION_LEFT); });
        expect(STAY, [] { act(ACTION_RIGHT); });
        expect(page.ok, [] { act(ACTION_OK); });
        expect(page.menu, [] { act(ACTION_MENU); });
        expect(page.two_minutes, [] { wait(TWO_MINUTES + 1); });
        for (int event = 0; event < EVENT_NONE; event++)
            expect(page.event[event], [event] { announce(event); });
    }
    screen_observer = nullptr;
    enter(BACK);
    EXPECT_EQ(announce(EVENT_SAVE_CONFIG_END), BACK) << "what has ended has no page";
    announce(EVENT_SETUP_WIZARD_START);
    root.write("/tmp/lcd/network_status/internet", "internet off\n");
    EXPECT_EQ(announce(EVENT_SETUP_WIZARD_END), EVENT) << "the Internet is lost";
}

TEST_F(Ways, LeadBackTenSecondsAfterTheLastKeyOfASave)
{
    enter(BACK);
    announce(EVENT_SAVE_CONFIG_START);
    EXPECT_EQ(wait(100), EVENT);
    act(ACTION_DOWN);
    EXPECT_EQ(wait(100), EVENT);
    EXPECT_EQ(wait(1), BACK);
}

TEST_F(Ways, LeadHomeOrIntoTheDarkAfterTwoMinutes)
{
    std::vector<std::string> leave = read_pages, stay = {"select_language", "init setup", "menu setup"};
    stay.insert(stay.end(), ring.begin(), ring.end());
    leave.insert(leave.end(), {"menu", "completeWPS", "failWPS"});
    for (const auto &[list, items] : tree)
        std::ranges::remove_copy(items, std::back_inserter(leave), "WPS start");
    const auto expect = [](const std::string &screen, const std::string &target) {
        enter(screen);
        EXPECT_EQ(wait(TWO_MINUTES), screen);
        EXPECT_EQ(wait(1), target) << screen;
    };
    for (const bool saving : {false, true}) {
        for (const std::string &screen : leave)
            expect(screen, saving ? DARK : HOME);
        for (const std::string &screen : stay)
            expect(screen, saving ? DARK : screen);
        /* Switches power saving on, and off for the tests to come. */
        enter("power save confirm");
        act(ACTION_OK);
    }
}
