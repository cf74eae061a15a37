#include "sim/clock.h"
#include "sim/json.h"
#include "tests/sim/simulator.h"

using namespace std::chrono_literals;

TEST(Json, EscapesWhatAStringCannotHold)
{
    const std::map<std::string, std::string> cases = {
        {"a\"b\\c\n\x01", "a\\\"b\\\\c\\u000a\\u0001"},
        {"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80"},
        {"\xe2\x82", "\xef\xbf\xbd\xef\xbf\xbd"},                 // cut
        {"\xc0\xaf", "\xef\xbf\xbd\xef\xbf\xbd"},                 // longer than need be
        {"\xed\xa0\x80", "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd"}, // a surrogate
    };
    for (const auto &[text, json] : cases)
        EXPECT_EQ(sim::json_string(text), "\"" + json + "\"");
}

/* After a stall the missed ticks come, but not in a burst: pending signals of one kind count as one. */
TEST(Clock, MakesUpForLateTicksWithoutABurst)
{
    constexpr auto TICK = 1ms; // at speed 100
    constexpr unsigned TICKS = 100;
    std::vector<std::chrono::steady_clock::time_point> begins, ends;
    std::atomic<bool> done = false;
    sim::Clock clock;
    clock.set_speed(100);
    const auto start = std::chrono::steady_clock::now();
    clock.start([&](uint64_t tick) {
        if (tick > TICKS)
            return;
        begins.push_back(std::chrono::steady_clock::now());
        if (tick == 1)
            std::this_thread::sleep_for(50ms);
        ends.push_back(std::chrono::steady_clock::now());
        done = tick == TICKS;
    });
    ASSERT_TRUE(eventually([&] { return done.load(); }));
    EXPECT_GE(ends.back() - start, TICKS * TICK);
    for (size_t i = 1; i < TICKS; ++i)
        EXPECT_GE(begins[i] - ends[i - 1], TICK / 2) << i;
}
