#include "core/timer.h"

#include "platform/router.h"

#include <csignal>
#include <cstdio>
#include <sys/time.h>

std::atomic<uint32_t> tick_count;

static constexpr itimerval tick_interval = {{0, 100000}, {0, 100000}};

void lcd_tick_handler(int)
{
    tick_count.store(tick_count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

void init_timer_fun()
{
    tick_count = 0;
    signal(SIGALRM, lcd_tick_handler);
    if (router_start_tick(&tick_interval) < 0)
        printf("lcd timer init failed\n");
}

void init_timer(LcdTimer *timer, uint32_t duration)
{
    if (!timer)
        return;
    timer->duration = duration;
    timer->start = tick_count;
}

int timer_expired(const LcdTimer *timer)
{
    if (!timer)
        return 1;
    return timer->start + timer->duration < tick_count;
}
