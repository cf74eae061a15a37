#include "sim/feed.h"

#include <cstring>
#include <linux/netlink.h>

namespace sim {

Feed::Feed()
{
    Pixels blank;
    blank.fill(0xff);
    show(blank, 0);
}

template <typename Change> void Feed::change(Change change)
{
    {
        const std::lock_guard lock(mutex_);
        change();
    }
    changed_.notify_all();
}

void Feed::show(const Pixels &pixels, uint64_t tick)
{
    change([&] {
        const Picture &old = news_.picture;
        news_.picture = {pixels, old.lit, tick, old.number + 1};
    });
}

void Feed::set_lit(bool lit, uint64_t tick)
{
    change([&] {
        const Picture &old = news_.picture;
        news_.picture = {old.pixels, lit, tick, old.number + 1};
    });
}

void Feed::set_state(State state)
{
    if (state != *news().state)
        change([&] { news_.state = std::make_shared<State>(std::move(state)); });
}

News Feed::news() const
{
    const std::lock_guard lock(mutex_);
    return news_;
}

std::optional<News> Feed::wait_for_other(const News &known, std::chrono::milliseconds time) const
{
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, time, [&] { return closed_ || news_ != known; });
    return closed_ || news_ == known ? std::nullopt : std::optional(news_);
}

void Feed::close()
{
    change([this] { closed_ = true; });
}

bool Feed::closed() const
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
