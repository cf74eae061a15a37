#include "tests/netlink/real_daemon.h"

#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/netlink.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;

static constexpr size_t MESSAGE_BYTES = 1040, HEADER_BYTES = 16;
static constexpr int PATIENCE_MS = 20000; // a machine under load and sanitizers; a pass takes less than one
static constexpr const char *DRIVER_MARK = "/run/driver";

RealDaemon::~RealDaemon()
{
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(sleeps_);
    close(driver_);
}

void RealDaemon::open_driver()
{
    driver_ = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_USERSOCK);
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_pid = static_cast<uint32_t>(getpid());
    ASSERT_EQ(bind(driver_, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    std::ofstream(root_.path(DRIVER_MARK));
}

/* In the child: becomes the daemon. What belongs to the test lies in /run, which no fault touches. */
void RealDaemon::run()
{
    const int output = open(root_.path(OUTPUT).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(output, STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    if (chroot(root_.path("/").c_str()) < 0 || chdir("/") < 0)
        _exit(126);
    setenv("LD_LIBRARY_PATH", "/run/panel", 1);
    setenv("LD_PRELOAD", "/run/panel/libnetlink_shim.so", 1);
    /* The sanitizers' library may come second. */
    setenv("ASAN_OPTIONS", "verify_asan_link_order=0", 1);
    execl("/run/panel/frontpaneld", "frontpaneld", nullptr);
    _exit(127);
}

void RealDaemon::start()
{
    for (const char *file : {DAEMON, NVRAM_LIBRARY, NETLINK_SHIM})
        std::filesystem::copy(file, root_.path("/run/panel"));
    int ends[2];
    if (pipe(ends) < 0)
        throw std::runtime_error("no pipe");
    sleeps_ = ends[0];
    setenv("LCD_SLEEPS", std::to_string(ends[1]).c_str(), 1);
    setenv("LCD_DRIVER", DRIVER_MARK, 1);
    setenv("LCD_RECEIVER", std::to_string(getpid()).c_str(), 1);
    pid_ = fork();
    if (pid_ == 0)
        run();
    close(ends[1]);
    wait_for_sleep();
}

void RealDaemon::wait_for_sleep()
{
    pollfd asleep = {sleeps_, POLLIN, 0};
    char byte;
    if (poll(&asleep, 1, PATIENCE_MS) != 1 || read(sleeps_, &byte, 1) != 1)
        throw std::runtime_error("the daemon is gone, or does not come to its sleep");
    take_frames();
}

void RealDaemon::pass(unsigned count)
{
    for (; count > 0; count--) {
        ticks_++;
        /* Stopped, it gets both signals at once: one pass sees them. */
        kill(pid_, SIGSTOP);
        if (input_announced_)
            kill(pid_, SIGUSR1);
        kill(pid_, SIGALRM);
        kill(pid_, SIGCONT);
        input_announced_ = false;
        wait_for_sleep();
    }
}

/* A number of this processor's order. */
template <typename Number> static std::string bytes_of(Number number)
{
    return {reinterpret_cast<const char *>(&number), sizeof number};
}

static std::string hex(std::string_view bytes)
{
    std::string text;
    for (const unsigned char byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

void RealDaemon::take_frames()
{
    const auto pid = static_cast<uint32_t>(pid_);
    const std::string header =
        bytes_of(uint32_t{1040}) + bytes_of(uint16_t{18}) + "\0\0"s + "\0\0\0\0"s + bytes_of(pid);
    std::string message(2 * MESSAGE_BYTES, '\0');
    sockaddr_nl sender = {};
    socklen_t size = sizeof sender;
    ssize_t got;
    while (driver_ >= 0 && (got = recvfrom(driver_, message.data(), message.size(), 0,
                                           reinterpret_cast<sockaddr *>(&sender), &size)) >= 0) {
        EXPECT_EQ(static_cast<size_t>(got), MESSAGE_BYTES);
        EXPECT_EQ(sender.nl_pid, pid) << "the port id that the kernel knows";
        EXPECT_EQ(sender.nl_groups, 0u);
        EXPECT_EQ(message.substr(0, HEADER_BYTES), header);
        const std::string_view picture(message.data() + HEADER_BYTES, MESSAGE_BYTES - HEADER_BYTES);
        frames_.push_back("@" + std::to_string(ticks_) + " frame " + hex(picture));
    }
}

std::string RealDaemon::printed() const
{
    std::ifstream file(root_.path(OUTPUT), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
