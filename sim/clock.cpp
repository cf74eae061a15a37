#include "sim/clock.h"

#include "sim/router_time.h"

#include <algorithm>

namespace sim {

using namespace std::chrono_literals;
using Time = std::chrono::steady_clock::time_point;

/* Ticks that are late by more than this are dropped: router time then stands still with the machine. */
static constexpr std::chrono::nanoseconds DROPPED_BEYOND = 500ms;

static void sleep_until(Time time)
{
    const auto since_start = time.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(since_start);
    const timespec due = {seconds.count(), (since_start - seconds).count()};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &due, nullptr) == EINTR)
        continue;
}

std::chrono::nanoseconds Clock::lasting(unsigned ticks) const
{
    return std::chrono::nanoseconds(1s) * ticks / (TICKS_PER_SECOND * speed_);
}

void Clock::start(std::function<void(uint64_t)> on_tick)
{
    thread_ = std::jthread([this, on_tick = std::move(on_tick)](const std::stop_token &stop) { run(stop, on_tick); });
}

void Clock::run(const std::stop_token &stop, const std::function<void(uint64_t)> &on_tick)
{
    const std::chrono::nanoseconds period = lasting(1);
    Time due = std::chrono::steady_clock::now();
    while (!stop.stop_requested()) {
        const Time now = std::chrono::steady_clock::now();
        due = std::max(due + period, now - DROPPED_BEYOND);
        /* Late ticks are made up for at twice the speed at most: signals that came in one burst would count as one. */
        sleep_until(std::max(due, now + period / 2));
        on_tick(++ticks_);
    }
}

} // namespace sim
