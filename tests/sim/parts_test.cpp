#include "sim/clock.h"
#include "sim/json.h"
#include "sim/settings.h"
#include "sim/text.h"
#include "tests/sim/simulator.h"

#include <fstream>

using namespace std::chrono_literals;

TEST(Json, EscapesWhatAStringCannotHold)
{
    const struct {
        std::string text, json;
    } cases[] = {
        {"", "\"\""},
        {"a\"b\\c\n\x01", "\"a\\\"b\\\\c\\u000a\\u0001\""},
        {"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", "\"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\""},
        {"\xff", "\"\xef\xbf\xbd\""},
        {"\xe2\x82", "\"\xef\xbf\xbd\xef\xbf\xbd\""},              // cut
        {"\xc0\xaf", "\"\xef\xbf\xbd\xef\xbf\xbd\""},              // longer than need be
        {"\xed\xa0\x80", "\"\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\""}, // a surrogate
    };
    for (const auto &c : cases)
        EXPECT_EQ(sim::json_string(c.text), c.json);
}

TEST(Text, EscapesWhatALineOrJsonCannotHold)
{
    const struct {
        std::string value, text;
    } cases[] = {
        {"a\"b\\\n", "a\\\"b\\\\\\n"},
        {"\xe2\x82\xac", "\xe2\x82\xac"},
        {"\xff\xe2\x82x", "\\xff\\xe2\\x82x"},
        {"", ""},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(sim::escaped(c.value), c.text);
        EXPECT_EQ(sim::unescaped(c.text), c.value);
    }
    EXPECT_FALSE(sim::unescaped("\\q"));
}

TEST(Settings, ReadsEachKeyOnceAndUndoesTheEscapes)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder.path() / "nvram");
    std::ofstream(folder.path() / "nvram/running") << "a=1\na=2\nno equals sign\n=x\nb=two\\nlines\nc=\\q\nd=e=f";
    const std::map<std::string, std::string> expected = {{"a", "1"}, {"b", "two\nlines"}, {"d", "e=f"}};
    EXPECT_EQ(sim::read_settings(folder.path()), expected);
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

/* Ticks are counted in any pace; a standing clock gives those alone that it is asked for. */
TEST(Clock, ChangesItsPaceAtOnce)
{
    std::atomic<uint64_t> last = 0;
    sim::Clock clock;
    clock.set_speed(0);
    clock.start([&](uint64_t tick) { last = tick; });
    clock.advance(1);
    EXPECT_EQ(last, 1u);
    std::thread other([&] { clock.advance(300); });
    clock.advance(300);
    other.join();
    EXPECT_EQ(last, 601u);
    EXPECT_EQ(clock.ticks(), 601u);
    clock.set_speed(100);
    EXPECT_TRUE(eventually([&] { return last > 650; }));
    clock.set_speed(1); // its first tick would come 100 ms later
    const uint64_t before = clock.ticks();
    clock.set_speed(0);
    EXPECT_LE(clock.ticks(), before + 1);
    EXPECT_EQ(clock.speed(), 0u);
}
