/* What is to be done to the router, one after the other: an input returns only when the daemon has taken it. */
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace sim {

class Tasks {
public:
    Tasks();

    /* Has `task` done after all that was asked for before; not when too many wait, as with a key held down. */
    void ask(std::function<void()> task);

    /* What the last task that failed has said; "" when none has since it was asked for. */
    std::string take_fault();

private:
    void run(const std::stop_token &stop);

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<std::function<void()>> waiting_;
    std::string fault_;
    std::jthread thread_; // last: it ends before what it uses goes
};

} // namespace sim
