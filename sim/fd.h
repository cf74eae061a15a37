/* An open descriptor, closed with its owner, and the exception of a failed system call. */
#pragma once

#include <cerrno>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace sim {

class Fd {
public:
    Fd() = default;
    explicit Fd(int fd) : fd_(fd) {}
    Fd(Fd &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Fd &operator=(Fd &&other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Fd()
    {
        if (fd_ >= 0)
            close(fd_);
    }

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

private:
    int fd_ = -1;
};

/* Throws errno as a std::system_error; `what` names the thing that could not be had. */
[[noreturn]] inline void fail(const std::string &what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace sim
