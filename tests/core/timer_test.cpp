#include "core/timer.h"

#include <gtest/gtest.h>

struct ExpiryCase {
    uint32_t armed_at, duration, now;
    int expired;
};

TEST(Timer, ExpiresOneTickAfterItsDuration)
{
    const ExpiryCase cases[] = {
        {10, 5, 10, 0},
        {10, 5, 15, 0},
        {10, 5, 16, 1},
        {10, 0, 10, 0},
        {10, 0, 11, 1},
        {0xFFFFFFF0, 5, 0xFFFFFFF5, 0}, // the last ticks before the count wraps
        {0xFFFFFFF0, 5, 0xFFFFFFF6, 1},
    };
    for (const ExpiryCase &test : cases) {
        LcdTimer timer;
        tick_count = test.armed_at;
        init_timer(&timer, test.duration);
        tick_count = test.now;
        EXPECT_EQ(timer_expired(&timer), test.expired) << test.armed_at << "+" << test.duration << " at " << test.now;
    }
}

TEST(Timer, NeverArmedOrNull)
{
    LcdTimer timer;
    tick_count = 0;
    EXPECT_EQ(timer_expired(&timer), 0);
    lcd_tick_handler(0);
    EXPECT_EQ(tick_count, 1u);
    EXPECT_EQ(timer_expired(&timer), 1);
    EXPECT_EQ(timer_expired(nullptr), 1);
    init_timer(nullptr, 5);
}
