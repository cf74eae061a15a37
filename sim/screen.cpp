#include "sim/screen.h"

#include <cstring>
#include <linux/netlink.h>

namespace sim {

Screen::Screen()
{
    picture_.pixels.fill(0xff);
}

template <typename Change> void Screen::change(uint64_t tick, Change change)
{
    {
        const std::lock_guard lock(mutex_);
        change(picture_);
        picture_.tick = tick;
        ++picture_.number;
    }
    changed_.notify_all();
}

void Screen::show(const Pixels &pixels, uint64_t tick)
{
    change(tick, [&](Picture &picture) { picture.pixels = pixels; });
}

void Screen::set_lit(bool lit, uint64_t tick)
{
    change(tick, [&](Picture &picture) { picture.lit = lit; });
}

Picture Screen::picture() const
{
    const std::lock_guard lock(mutex_);
    return picture_;
}

std::optional<Picture> Screen::wait_for_other(uint64_t number, std::chrono::milliseconds time) const
{
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, time, [&] { return closed_ || picture_.number != number; });
    return closed_ || picture_.number == number ? std::nullopt : std::optional(picture_);
}

void Screen::close()
{
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
    }
    changed_.notify_all();
}

bool Screen::closed() const
{
    const std::lock_guard lock(mutex_);
    return closed_;
}

std::optional<Pixels> frame_of(std::string_view message)
{
    nlmsghdr header;
    if (message.size() != sizeof header + LCD_FRAME_BYTES)
        return std::nullopt;
    std::memcpy(&header, message.data(), sizeof header);
    if (header.nlmsg_len != message.size() || header.nlmsg_type != LCD_MSG_TYPE)
        return std::nullopt;
    Pixels pixels;
    std::memcpy(pixels.data(), message.data() + sizeof header, pixels.size());
    return pixels;
}

} // namespace sim
