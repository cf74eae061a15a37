/* What the panel server lets others do to the router. */
#include "sim/json.h"
#include "sim/messages.h"
#include "sim/panel_server.h"
#include "sim/places.h"
#include "sim/world.h"

#include <algorithm>

namespace sim {

using namespace std::chrono_literals;
using httplib::ContentReader;
using httplib::Request;
using httplib::Response;

static constexpr const char *JSON = "application/json";
static constexpr uint64_t MOST_TICKS = 72000; // of a wait: two hours of router time
static constexpr auto LOOK_PERIOD = 20ms;     // of the look whether the ticks of a wait have passed

/* The body of a POST request; nothing, and the status, when it does not come whole. The library by itself holds neither
 * one in chunks nor a packed one to the limit. */
static std::optional<std::string> read_body(const Request &request, Response &response, const ContentReader &read)
{
    std::string body;
    const auto take = [&body](const char *data, size_t size) {
        body.append(data, std::min(size, LARGEST_BODY + 1 - body.size()));
        return body.size() <= LARGEST_BODY;
    };
    if (request.is_multipart_form_data())
        throw BadRequest("a body is the value itself, not a form");
    /* A request may come without a body and without its length: the library would wait for more. */
    const bool has_body = request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
    const bool is_whole = !has_body || read(take);
    if (body.size() > LARGEST_BODY)
        response.status = 413;
    return is_whole ? std::optional(body) : std::nullopt;
}

/* Lets `handle` answer POST requests that match `pattern`; it gets the body too. */
template <typename Handle> static void add_post(httplib::Server &server, const char *pattern, Handle handle)
{
    server.Post(pattern, [handle](const Request &request, Response &response, const ContentReader &read) {
        if (const auto body = read_body(request, response, read))
            handle(request, response, *body);
    });
}

/* Waits until the LCD shows another picture or `ticks` have passed, which a clock that stands still makes meanwhile. */
void PanelRoutes::answer_until_change(Response &response, uint64_t ticks)
{
    const Feed &feed = router_.feed();
    const News before = feed.news();
    News now = before;
    const uint64_t end = router_.clock().ticks() + ticks;
    while (now.picture == before.picture && router_.clock().ticks() < end && !feed.closed()) {
        if (router_.clock().speed() == 0)
            router_.clock().advance(1);
        now = router_.clock().speed() == 0 ? feed.news() : feed.wait_for_other(now, LOOK_PERIOD).value_or(now);
    }
    response.set_content(change_json(now.picture, router_.clock().ticks(), now.picture != before.picture), JSON);
}

/* Puts the router, as it runs, in a ready world. */
void PanelRoutes::answer_world(Response &response, const std::string &name)
{
    const std::vector<std::string> worlds = ready_worlds();
    if (std::ranges::find(worlds, name) == worlds.end())
        throw BadRequest("no ready world " + name + ": GET /worlds names them");
    const std::vector<WorldLine> world = read_world(name);
    router_.note_input("world " + name);
    change_world(router_, world);
    response.status = 204;
}

/* Gives an input its value. */
void PanelRoutes::answer_input(Response &response, const std::string &id, const std::string &value)
{
    const auto input = find_input(id);
    const std::string fault = input ? fault_of(*input, value) : "is no input: GET /inputs lists them";
    if (!fault.empty()) {
        answer(response, input ? 400 : 404, id + " " + fault);
        return;
    }
    router_.note_input(value.empty() ? id : id + " " + value);
    set_input(router_, *input, value);
    response.status = 204;
}

void PanelRoutes::add_inputs()
{
    add_post(server_, "/input/(.+)", [this](const Request &request, Response &response, const std::string &value) {
        answer_input(response, request.matches[1], value);
    });
    add_post(server_, "/(key|event)/([^/]+)", [this](const Request &from, Response &response, const std::string &body) {
        answer_input(response, from.matches[1].str() + "." + from.matches[2].str(), body);
    });
    add_post(server_, "/until-change", [this](const Request &request, Response &response, const std::string &) {
        answer_until_change(response, number_of(request, "ticks", 1, MOST_TICKS, std::nullopt));
    });
    server_.Get("/worlds", [](const Request &, Response &response) {
        response.set_content(json_array(ready_worlds()) + "\n", JSON);
    });
    add_post(server_, "/world", [this](const Request &, Response &response, const std::string &name) {
        answer_world(response, name);
    });
    server_.Delete("/input/(.+)", [this](const Request &request, Response &response, const ContentReader &) {
        const std::string id = request.matches[1];
        const auto input = find_input(id);
        if (input && input->group == SETTINGS_GROUP) {
            router_.note_input(id + " removed");
            router_.change_setting(std::string(input->target), std::nullopt);
            response.status = 204;
        } else {
            answer(response, 404, id + " cannot be removed: only setting.KEY can");
        }
    });
}

/* Without an answer of ours the library would first take in the body, however large it is. */
void PanelRoutes::refuse_other_bodies()
{
    static constexpr const char *ANY = "[\\s\\S]*";
    const auto refuse = [](const Request &, Response &response, const ContentReader &) { response.status = 404; };
    server_.Post(ANY, refuse).Put(ANY, refuse).Patch(ANY, refuse).Delete(ANY, refuse);
}

} // namespace sim
