#include "sim/connection_threads.h"

namespace sim {

void ConnectionThreads::enqueue(std::function<void()> connection)
{
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(connection));
        if (waiting_.size() > idle_ && threads_.size() < limit_)
            threads_.emplace_back(&ConnectionThreads::serve, this);
    }
    changed_.notify_one();
}

void ConnectionThreads::serve()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        changed_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        --idle_;
        if (waiting_.empty())
            return;
        const std::function<void()> connection = std::move(waiting_.back());
        waiting_.pop_back();
        lock.unlock();
        connection();
        lock.lock();
    }
}

/* What still waits is served first: the server closes those connections at once. */
void ConnectionThreads::shutdown()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    for (std::thread &thread : threads_)
        thread.join();
}

} // namespace sim
