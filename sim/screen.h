/* What the LCD shows, and the waiting for something new on it. Any thread may ask. */
#pragma once

#include "core/display.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>

namespace sim {

using Pixels = std::array<uint8_t, LCD_FRAME_BYTES>; // as the driver gets them: 0 is a drawn pixel

struct Picture {
    Pixels pixels;
    bool lit = true;     // the backlight
    uint64_t tick = 0;   // when it was shown
    uint64_t number = 1; // counts the changes
};

class Screen {
public:
    /* Blank and lit. */
    Screen();

    void show(const Pixels &pixels, uint64_t tick);
    void set_lit(bool lit, uint64_t tick);

    Picture picture() const;

    /* Waits at most `time` for a picture other than `number`; nothing when none came, or after close(). */
    std::optional<Picture> wait_for_other(uint64_t number, std::chrono::milliseconds time) const;

    /* Ends all waiting for good. */
    void close();
    bool closed() const;

private:
    template <typename Change> void change(uint64_t tick, Change change);

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    Picture picture_;
    bool closed_ = false;
};

/* The pixels of a message to the LCD driver; nothing when it is no frame. */
std::optional<Pixels> frame_of(std::string_view message);

} // namespace sim
