/* The router's clock: calls back once a tick, 100 ms of router time, from a thread of its own. */
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <thread>

namespace sim {

class Clock {
public:
    /* `speed`: how many times faster than the machine's clock, 1..100. */
    explicit Clock(unsigned speed) : speed_(speed) {}

    /* Starts the ticks. `on_tick` gets the number of each, from 1; the clock stops with its owner. */
    void start(std::function<void(uint64_t)> on_tick);

    uint64_t ticks() const { return ticks_; }
    unsigned speed() const { return speed_; }

    /* What `ticks` last by the machine's clock. */
    std::chrono::nanoseconds lasting(unsigned ticks) const;

private:
    void run(const std::stop_token &stop, const std::function<void(uint64_t)> &on_tick);

    const unsigned speed_;
    std::atomic<uint64_t> ticks_ = 0;
    std::jthread thread_;
};

} // namespace sim
