/* The 100 ms tick and the timers counted in it. */
#pragma once

#include <atomic>
#include <cstdint>

/* Ticks since init_timer_fun. The tick signal writes it; it wraps after 13.6 years. */
extern std::atomic<uint32_t> tick_count;
static_assert(std::atomic<uint32_t>::is_always_lock_free, "a signal handler writes the tick count");

/* A delay that its owner polls. All zero (never armed), it has expired from tick 1 on. */
struct LcdTimer {
    uint32_t start = 0;    // tick_count when armed
    uint32_t duration = 0; // ticks
};

/* Starts the tick at 0. Without an interval timer it says so on standard output and the count stands still. */
void init_timer_fun();

/* The handler of the tick signal: counts one tick. */
void lcd_tick_handler(int signal_number);

/* Arms `timer` for `duration` ticks; a null timer is ignored. */
void init_timer(LcdTimer *timer, uint32_t duration);

/* 1 from the tick after start + duration on, 0 before; 1 for a null timer. */
int timer_expired(const LcdTimer *timer);
