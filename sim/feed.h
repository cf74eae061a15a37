/* What is told to everyone who watches: the picture on the LCD, the values of the inputs and the time line of what has
 * happened. Any thread may ask. */
#pragma once

#include "core/display.h"
#include "sim/settings.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

enum class Happened {
    INPUT,   // done from outside
    PRINT,   // a program has printed a line
    COMMAND, // the daemon runs or captures one
    SETTING, // the daemon has written one, or commits them
    FRAME,   // the LCD shows another picture
    ROUTER,  // what becomes of the router and its programs
};

/* A line of the time line. */
struct Happening {
    uint64_t id; // from 1, without a gap
    uint64_t tick;
    Happened kind;
    std::string text;
    uint64_t picture; // number of the one that the LCD showed then
};

struct News {
    Picture picture = {};
    std::shared_ptr<const State> state = std::make_shared<State>();
    uint64_t next_happening = 1; // id

    bool operator==(const News &) const = default;
};

class Feed {
public:
    /* A blank and lit LCD, no values. */
    Feed();

    /* What the LCD shows from `tick` on; a picture that it shows already is no news. */
    void show(const Pixels &pixels, uint64_t tick);
    void set_lit(bool lit, uint64_t tick);
    void set_state(State state);
    void happen(Happened kind, std::string_view text, uint64_t tick);

    News news() const;

    /* What has happened from `id` on, as far as it is kept, but the last `most` alone. */
    std::vector<Happening> happenings(uint64_t id, size_t most) const;

    /* A picture that is kept, by its number. */
    std::optional<Picture> picture(uint64_t number) const;

    /* The kept pictures that the LCD showed between two ticks, these included. */
    std::vector<Picture> pictures(uint64_t from, uint64_t to) const;

    /* Waits at most `time` for other news than `known`; nothing when none came, or after close(). */
    std::optional<News> wait_for_other(const News &known, std::chrono::milliseconds time) const;

    /* Ends all waiting for good. */
    void close();
    bool closed() const;

private:
    template <typename Change> void change(Change change);
    void show(const Picture &picture);
    void add(Happened kind, std::string_view text, uint64_t tick);

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    News news_;
    std::deque<Happening> happenings_;
    std::deque<Picture> pictures_;
    bool closed_ = false;
};

/* The pixels of a message to the LCD driver; nothing when it is no frame. */
std::optional<Pixels> frame_of(std::string_view message);

} // namespace sim
