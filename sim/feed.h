/* What is told to everyone who watches: the picture on the LCD and the values of the inputs. Any thread may ask. */
#pragma once

#include "core/display.h"
#include "sim/settings.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace sim {

using Pixels = std::array<uint8_t, LCD_FRAME_BYTES>; // as the driver gets them: 0 is a drawn pixel

struct Picture {
    Pixels pixels = {};
    bool lit = true;     // the backlight
    uint64_t tick = 0;   // when it was shown
    uint64_t number = 0; // counts the changes; 0: nothing was shown yet

    bool operator==(const Picture &other) const { return number == other.number; }
};

struct State {
    std::map<std::string, std::string> values; // of the inputs, by their ids
    Settings settings;                         // the running ones, values escaped

    bool operator==(const State &) const = default;
};

struct News {
    Picture picture = {};
    std::shared_ptr<const State> state = std::make_shared<State>();

    bool operator==(const News &) const = default;
};

class Feed {
public:
    /* A blank and lit LCD, no values. */
    Feed();

    void show(const Pixels &pixels, uint64_t tick);
    void set_lit(bool lit, uint64_t tick);
    void set_state(State state);

    News news() const;

    /* Waits at most `time` for other news than `known`; nothing when none came, or after close(). */
    std::optional<News> wait_for_other(const News &known, std::chrono::milliseconds time) const;

    /* Ends all waiting for good. */
    void close();
    bool closed() const;

private:
    template <typename Change> void change(Change change);

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    News news_;
    bool closed_ = false;
};

/* The pixels of a message to the LCD driver; nothing when it is no frame. */
std::optional<Pixels> frame_of(std::string_view message);

} // namespace sim
