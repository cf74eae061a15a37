/* The router's clock: calls back once a tick, 100 ms of router time, from a thread of its own. Any thread may change
 * its pace at any time. */
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace sim {

constexpr unsigned FASTEST = 100; // how many times faster than the machine's clock

class Clock {
public:
    /* Starts the ticks, in real time until set_speed says otherwise. `on_tick` gets the number of each, from 1; the
     * clock stops with its owner. */
    void start(std::function<void(uint64_t)> on_tick);

    uint64_t ticks() const { return ticks_; }

    /* How many times faster than the machine's clock, 1..FASTEST; 0: it stands still. */
    unsigned speed() const { return speed_; }
    void set_speed(unsigned speed);

    /* Lets `ticks` more pass at once, also while it stands still; returns when they have. */
    void advance(unsigned ticks);

private:
    using Time = std::chrono::steady_clock::time_point;

    void run(const std::stop_token &stop, const std::function<void(uint64_t)> &on_tick);
    bool wait_for_tick(const std::stop_token &stop, std::unique_lock<std::mutex> &lock, Time &due);

    std::atomic<uint64_t> ticks_ = 0;
    std::atomic<unsigned> speed_ = 1;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    uint64_t changes_ = 0;           // of the pace
    uint64_t asked_ = 0, given_ = 0; // ticks that advance has asked for and got
    bool ended_ = false;
    std::jthread thread_;
};

} // namespace sim
