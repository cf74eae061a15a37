#include "platform/router.h"
#include "tests/platform/desk_folder.h"

#include <gtest/gtest.h>
#include <sys/time.h>

class DeskClock : public testing::Test
{
protected:
    ~DeskClock() override { unsetenv("PANEL_CLOCK"); }

    const std::filesystem::path file = desk_folder() / "run/clock";
};

TEST_F(DeskClock, IsTheSimulatorsWhereItKeepsOne)
{
    constexpr time_t LONG_AGO = 1600000000; // the workstation's clock is past it
    write_file(file, "5 86400\n");
    EXPECT_GT(router_time(), LONG_AGO);
    setenv("PANEL_CLOCK", "simulator", 1);
    EXPECT_EQ(router_time(), 86400);
    for (const char *malformed : {"", "5\n", "5 6", "x 6\n", "5 6x\n", "5 99999999999999999999\n"}) {
        write_file(file, malformed);
        EXPECT_GT(router_time(), LONG_AGO) << malformed;
    }
    std::filesystem::remove(file);
    EXPECT_GT(router_time(), LONG_AGO);
    std::filesystem::create_directory(file); // opens, but cannot be read
    EXPECT_GT(router_time(), LONG_AGO);
    std::filesystem::remove(file);
}

TEST_F(DeskClock, TicksByItselfOnlyWithoutASimulator)
{
    const itimerval hour = {{3600, 0}, {3600, 0}}, off = {};
    itimerval running;
    setenv("PANEL_CLOCK", "simulator", 1);
    EXPECT_EQ(router_start_tick(&hour), 0);
    getitimer(ITIMER_REAL, &running);
    EXPECT_EQ(running.it_interval.tv_sec, 0);
    unsetenv("PANEL_CLOCK");
    EXPECT_EQ(router_start_tick(&hour), 0);
    setitimer(ITIMER_REAL, &off, &running);
    EXPECT_EQ(running.it_interval.tv_sec, 3600);
}

TEST_F(DeskClock, LocalTimeIsThatOfARouterWithoutAZone)
{
    setenv("TZ", "XYZ-5", 1);
    tm local;
    ASSERT_NE(router_local_time(1700000000, &local), nullptr);
    unsetenv("TZ");
    EXPECT_EQ(local.tm_hour, 22);
}
