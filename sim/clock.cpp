#include "sim/clock.h"

#include "sim/router_time.h"

#include <algorithm>

namespace sim {

using namespace std::chrono_literals;

static constexpr std::chrono::nanoseconds TICK = std::chrono::nanoseconds(1s) / TICKS_PER_SECOND;
static constexpr std::chrono::nanoseconds ADVANCED_TICK = TICK / (2 * FASTEST);

/* Ticks that are late by more than this are dropped: router time then stands still with the machine. */
static constexpr std::chrono::nanoseconds DROPPED_BEYOND = 500ms;

void Clock::start(std::function<void(uint64_t)> on_tick)
{
    thread_ = std::jthread([this, on_tick = std::move(on_tick)](const std::stop_token &stop) { run(stop, on_tick); });
}

void Clock::set_speed(unsigned speed)
{
    const std::lock_guard lock(mutex_);
    speed_ = speed;
    ++changes_;
    changed_.notify_all();
}

void Clock::advance(unsigned ticks)
{
    std::unique_lock lock(mutex_);
    const uint64_t goal = asked_ += ticks;
    ++changes_;
    changed_.notify_all();
    changed_.wait(lock, [&] { return ended_ || given_ >= goal; });
}

/* Waits until the tick after the one of `due`, which is moved on to it. False when the pace has changed meanwhile. */
bool Clock::wait_for_tick(const std::stop_token &stop, std::unique_lock<std::mutex> &lock, Time &due)
{
    const bool advancing = asked_ > given_;
    const unsigned pace = speed_;
    const auto has_changed = [this, seen = changes_] { return changes_ != seen; };
    if (!advancing && pace == 0) {
        changed_.wait(lock, stop, has_changed);
    } else {
        const auto period = advancing ? ADVANCED_TICK : TICK / pace;
        const Time now = std::chrono::steady_clock::now();
        due = std::max(due + period, now - DROPPED_BEYOND);
        /* Late ticks are made up for at twice the speed at most: signals that came in one burst would count as one. */
        if (!changed_.wait_until(lock, stop, std::max(due, now + period / 2), has_changed))
            return true;
    }
    due = std::chrono::steady_clock::now();
    return false;
}

void Clock::run(const std::stop_token &stop, const std::function<void(uint64_t)> &on_tick)
{
    Time due = std::chrono::steady_clock::now();
    std::unique_lock lock(mutex_);
    while (!stop.stop_requested()) {
        if (!wait_for_tick(stop, lock, due) || stop.stop_requested())
            continue;
        const bool advancing = asked_ > given_;
        lock.unlock();
        on_tick(++ticks_);
        lock.lock();
        if (advancing && ++given_ == asked_)
            due = std::chrono::steady_clock::now();
        changed_.notify_all();
    }
    ended_ = true;
    changed_.notify_all();
}

} // namespace sim
