#include "core/file.h"

#include "platform/nvram.h"
#include "platform/router.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

File::File(const char *path, int flags) : fd_(router_open(path, flags)) {}

File::~File()
{
    if (fd_ >= 0)
        close(fd_);
}

ssize_t File::read(void *buffer, size_t size) const
{
    ssize_t count;
    do
        count = ::read(fd_, buffer, size);
    while (count < 0 && errno == EINTR);
    return count;
}

size_t File::read_once(void *buffer, size_t size) const
{
    const ssize_t count = read(buffer, size);
    return count > 0 ? static_cast<size_t>(count) : 0;
}

size_t File::read_full(void *buffer, size_t size) const
{
    size_t total = 0;
    while (total < size) {
        const ssize_t count = read(static_cast<char *>(buffer) + total, size - total);
        if (count <= 0)
            break;
        total += static_cast<size_t>(count);
    }
    return total;
}

bool File::is_plain() const
{
    struct stat status;
    return fd_ >= 0 && fstat(fd_, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1;
}

bool File::write_full(const void *buffer, size_t size) const
{
    size_t total = 0;
    while (total < size) {
        const ssize_t count = write(fd_, static_cast<const char *>(buffer) + total, size - total);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        total += static_cast<size_t>(count);
    }
    return true;
}

bool LineReader::fill()
{
    start_ = 0;
    /* A short read has seen the end: what a writer puts behind it afterwards belongs to no line here. */
    end_ = file_ && !ended_ && fills_left_-- > 0 ? file_.read_once(buffer_, sizeof buffer_) : 0;
    ended_ = end_ < sizeof buffer_;
    return end_ > 0;
}

bool LineReader::next(std::span<char> line)
{
    size_t length = 0;
    char last = '\0';
    while (length + 1 < line.size() && last != '\n' && (start_ < end_ || fill()))
        last = line[length++] = buffer_[start_++];
    line[length] = '\0';
    return length > 0;
}

Setting::Setting(const char *key) : text_(nvram_safe_get(key)) {}

Setting::~Setting()
{
    free(text_);
}

bool read_first_line(const char *path, std::span<char> line)
{
    line[0] = '\0';
    const File file(path);
    if (!file)
        return false;
    const size_t length = file.read_once(line.data(), line.size() - 1);
    const void *newline = memchr(line.data(), '\n', length);
    const size_t end = newline ? static_cast<size_t>(static_cast<const char *>(newline) - line.data()) + 1 : length;
    line[end] = '\0';
    return true;
}
