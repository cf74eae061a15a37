#include "sim/terminal_tasks.h"

#include <utility>

namespace sim {

static constexpr size_t MOST_WAITING = 20;

Tasks::Tasks() : thread_([this](const std::stop_token &stop) { run(stop); }) {}

void Tasks::ask(std::function<void()> task)
{
    const std::lock_guard lock(mutex_);
    if (waiting_.size() < MOST_WAITING)
        waiting_.push_back(std::move(task));
    changed_.notify_one();
}

std::string Tasks::take_fault()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(fault_, "");
}

void Tasks::run(const std::stop_token &stop)
{
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [this] { return !waiting_.empty(); }) && !stop.stop_requested()) {
        const auto task = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        std::string fault;
        try {
            task();
        } catch (const std::exception &error) {
            fault = error.what();
        }
        lock.lock();
        fault_ += fault;
    }
}

} // namespace sim
