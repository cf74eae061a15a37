/* A thread for each connection of the HTTP server, up to a limit. */
#pragma once

#include <condition_variable>
#include <functional>
#include <httplib.h>
#include <mutex>
#include <thread>
#include <vector>

namespace sim {

/* Event streams hold their thread as long as a page is open, so a small fixed pool would starve. Beyond the limit the
 * newest connection gets the next free thread: a live one is answered though many idle ones wait for their time-out. */
class ConnectionThreads : public httplib::TaskQueue {
public:
    explicit ConnectionThreads(size_t limit) : limit_(limit) {}

    void enqueue(std::function<void()> connection) override;
    void shutdown() override;

private:
    void serve();

    const size_t limit_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::function<void()>> waiting_;
    size_t idle_ = 0; // threads without a connection
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

} // namespace sim
