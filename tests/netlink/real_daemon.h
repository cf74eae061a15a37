/* The router's own daemon, running in a private root with its clock in the test's hands, and the display driver's place
 * at the other end of its netlink socket. */
#pragma once

#include "tests/netlink/private_root.h"

#include <string>
#include <sys/types.h>
#include <vector>

class RealDaemon
{
public:
    /* The router path where its messages go. */
    static constexpr const char *OUTPUT = "/run/output";

    explicit RealDaemon(const PrivateRoot &root) : root_(root) {}
    ~RealDaemon();
    RealDaemon(const RealDaemon &) = delete;
    RealDaemon &operator=(const RealDaemon &) = delete;

    /* From now on frames are received; before, the kernel has no driver. */
    void open_driver();
    void start();
    /* One tick arrives, then the loop makes one pass, which also sees the signals announced since the last. */
    void pass(unsigned count = 1);
    /* Announces a key or an event: SIGUSR1 with the next pass. */
    void announce_input() { input_announced_ = true; }

    /* All frames so far, as panel-replay records them: "@TICK frame HEX". */
    const std::vector<std::string> &frames() const { return frames_; }
    /* All that it printed so far. */
    std::string printed() const;

private:
    void run();
    void wait_for_sleep();
    void take_frames();

    const PrivateRoot &root_;
    pid_t pid_ = 0;
    int sleeps_ = -1, driver_ = -1;
    unsigned ticks_ = 0;
    bool input_announced_ = false;
    std::vector<std::string> frames_;
};
