#include "sim/feed.h"

#include <algorithm>
#include <cstring>
#include <linux/netlink.h>

namespace sim {

static constexpr size_t KEPT_HAPPENINGS = 5000, KEPT_PICTURES = 2000;
static constexpr size_t LONGEST_TEXT = 1000; // bytes of a happening; what is longer is cut

Feed::Feed()
{
    news_.picture.pixels.fill(0xff);
}

template <typename Change> void Feed::change(Change change)
{
    {
        const std::lock_guard lock(mutex_);
        change();
    }
    changed_.notify_all();
}

void Feed::add(Happened kind, std::string_view text, uint64_t tick)
{
    happenings_.push_back({news_.next_happening++, tick, kind, std::string(text.substr(0, LONGEST_TEXT)),
                           news_.picture.number});
    if (happenings_.size() > KEPT_HAPPENINGS)
        happenings_.pop_front();
}

void Feed::show(const Picture &picture)
{
    const Picture &old = news_.picture;
    if (old.number > 0 && old.pixels == picture.pixels && old.lit == picture.lit)
        return;
    news_.picture = picture;
    news_.picture.number = (pictures_.empty() ? 0 : pictures_.back().number) + 1;
    pictures_.push_back(news_.picture);
    if (pictures_.size() > KEPT_PICTURES)
        pictures_.pop_front();
    add(Happened::FRAME, "picture " + std::to_string(news_.picture.number), picture.tick);
}

void Feed::show(const Pixels &pixels, uint64_t tick)
{
    change([&] { show({pixels, news_.picture.lit, tick}); });
}

void Feed::set_lit(bool lit, uint64_t tick)
{
    change([&] {
        if (lit != news_.picture.lit)
            show({news_.picture.pixels, lit, tick});
    });
}

void Feed::set_state(State state)
{
    if (state != *news().state)
        change([&] { news_.state = std::make_shared<State>(std::move(state)); });
}

void Feed::happen(Happened kind, std::string_view text, uint64_t tick)
{
    change([&] { add(kind, text, tick); });
}

News Feed::news() const
{
    const std::lock_guard lock(mutex_);
    return news_;
}

std::vector<Happening> Feed::happenings(uint64_t id, size_t most) const
{
    const std::lock_guard lock(mutex_);
    const auto first = std::ranges::lower_bound(happenings_, id, {}, &Happening::id);
    const auto kept = static_cast<size_t>(happenings_.end() - first);
    return {happenings_.end() - static_cast<std::ptrdiff_t>(std::min(kept, most)), happenings_.end()};
}

std::optional<Picture> Feed::picture(uint64_t number) const
{
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::lower_bound(pictures_, number, {}, &Picture::number);
    return found == pictures_.end() || found->number != number ? std::nullopt : std::optional(*found);
}

std::vector<Picture> Feed::pictures(uint64_t from, uint64_t to) const
{
    const std::lock_guard lock(mutex_);
    auto first = std::ranges::upper_bound(pictures_, from, {}, &Picture::tick);
    if (first != pictures_.begin())
        --first;
    return {first, std::max(first, std::ranges::upper_bound(pictures_, to, {}, &Picture::tick))};
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
