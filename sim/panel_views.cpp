/* What the panel server shows: the LCD, the values, the time line. */
#include "sim/messages.h"
#include "sim/panel_server.h"
#include "sim/picture_files.h"
#include "sim/places.h"

#include <memory>

namespace sim {

using namespace std::chrono_literals;
using httplib::Request;
using httplib::Response;

static constexpr const char *JSON = "application/json";
static constexpr const char *BYTES = "application/octet-stream";
static constexpr size_t LARGEST_RECORDING = 2000 * 4 * 4; // pictures, each as often as its scale enlarges it
static constexpr size_t FIRST_HAPPENINGS = 500; // on a stream: so many that have happened before
static constexpr auto KEEP_ALIVE_PERIOD = 10s;  // of comments on a stream with nothing new
static constexpr auto LIVENESS_PERIOD = 1s;     // of the look whether a stream's reader is still there

static std::string bytes_of(const Picture &picture)
{
    return {picture.pixels.begin(), picture.pixels.end()};
}

void PanelRoutes::add_views()
{
    server_.Get("/stream", [this](const Request &, Response &response) { stream(response); });
    server_.Get("/frame", [this](const Request &, Response &response) {
        response.set_content(bytes_of(router_.feed().news().picture), BYTES);
    });
    server_.Get("/state", [this](const Request &, Response &response) {
        const Clock &clock = router_.clock();
        const bool lit = router_.feed().news().picture.lit;
        response.set_content(state_json(clock.ticks(), clock.speed(), lit, read_state(router_)), JSON);
    });
    server_.Get("/inputs", [this](const Request &, Response &response) {
        response.set_content(inputs_json(router_.clock().ticks(), read_state(router_)), JSON);
    });
}

Picture PanelRoutes::kept_picture(const Request &request) const
{
    const auto picture = router_.feed().picture(std::strtoull(request.matches[1].str().c_str(), nullptr, 10));
    if (!picture)
        throw NotFound("no picture " + request.matches[1].str() + " is kept");
    return *picture;
}

void PanelRoutes::add_time_line()
{
    server_.Get("/happenings", [this](const Request &request, Response &response) {
        const uint64_t from = number_of(request, "from", 0, UINT64_MAX, 0);
        const auto happenings = router_.feed().happenings(from, SIZE_MAX);
        const uint64_t next = happenings.empty() ? router_.feed().news().next_happening : happenings.back().id + 1;
        response.set_content("{\"next\":" + std::to_string(next) + ",\"happenings\":" + happenings_json(happenings) +
                                 "}\n",
                             JSON);
    });
    server_.Get("/picture/(\\d+)", [this](const Request &request, Response &response) {
        const Picture picture = kept_picture(request);
        response.set_header("Lit", picture.lit ? "yes" : "no");
        response.set_content(bytes_of(picture), BYTES);
    });
    server_.Get("/script", [this](const Request &, Response &response) {
        response.set_content(router_.script(), "text/plain; charset=utf-8");
    });
}

static Look look_of(const Request &request)
{
    const std::string look = request.has_param("look") ? request.get_param_value("look") : "lcd";
    if (look != "lcd" && look != "plain")
        throw BadRequest("look takes one of lcd, plain");
    return look == "lcd" ? Look::LCD : Look::PLAIN;
}

static unsigned scale_of(const Request &request)
{
    return static_cast<unsigned>(number_of(request, "scale", 1, LARGEST_SCALE, 4));
}

void PanelRoutes::add_pictures()
{
    server_.Get("/screenshot.png", [this](const Request &request, Response &response) {
        const Picture picture = router_.feed().news().picture;
        response.set_content(png_file(picture, look_of(request), scale_of(request)), "image/png");
    });
    server_.Get("/picture/(\\d+)\\.png", [this](const Request &request, Response &response) {
        response.set_content(png_file(kept_picture(request), look_of(request), scale_of(request)), "image/png");
    });
    server_.Get("/recording.gif", [this](const Request &request, Response &response) {
        const uint64_t now = router_.clock().ticks();
        const uint64_t from = number_of(request, "from", 0, now, 0), to = number_of(request, "to", from, now, now);
        const auto stills = stills_between(router_.feed().pictures(from, to), from, to);
        const unsigned scale = scale_of(request);
        if (stills.empty())
            throw BadRequest("no picture is kept of these ticks");
        if (stills.size() * scale * scale > LARGEST_RECORDING)
            throw BadRequest("too many pictures for this scale");
        response.set_content(gif_file(stills, look_of(request), scale), "image/gif");
    });
}

struct StreamReader {
    std::optional<News> known = {}; // what it was told
    std::chrono::steady_clock::time_point spoken = std::chrono::steady_clock::now();
};

/* What `reader` has not been told of `news`. */
static std::string events_for(const StreamReader &reader, const News &news, const Feed &feed, uint64_t tick)
{
    static const News nothing;
    const News &known = reader.known ? *reader.known : nothing;
    std::string events;
    if (!reader.known || news.picture != known.picture)
        events += frame_event(news.picture);
    if (news.state != known.state)
        events += state_event(tick, *known.state, *news.state);
    auto happenings = feed.happenings(known.next_happening, reader.known ? SIZE_MAX : FIRST_HAPPENINGS);
    /* Those that came after `news` are told with the next. */
    std::erase_if(happenings, [&](const Happening &each) { return each.id >= news.next_happening; });
    if (!happenings.empty())
        events += happenings_event(happenings);
    return events;
}

void PanelRoutes::stream(Response &response)
{
    if (++streams_ > MOST_STREAMS) {
        --streams_;
        answer(response, 503, "too many streams");
        return;
    }
    const auto send_next = [this, reader = std::make_shared<StreamReader>()](size_t, httplib::DataSink &sink) {
        const Feed &feed = router_.feed();
        const auto news = reader->known ? feed.wait_for_other(*reader->known, LIVENESS_PERIOD) : feed.news();
        const auto now = std::chrono::steady_clock::now();
        if (feed.closed() || !sink.is_writable())
            return false;
        if (!news && now - reader->spoken < KEEP_ALIVE_PERIOD)
            return true;
        const std::string text = news ? events_for(*reader, *news, feed, router_.clock().ticks()) : ":\n\n";
        if (news)
            reader->known = news;
        reader->spoken = now;
        return sink.write(text.data(), text.size());
    };
    response.set_chunked_content_provider("text/event-stream", send_next, [this](bool) { --streams_; });
}

} // namespace sim
