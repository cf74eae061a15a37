#include "sim/panel_server.h"

#include "sim/connection_threads.h"
#include "sim/files.h"
#include "sim/messages.h"
#include "sim/places.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace sim {

using namespace std::chrono_literals;
using httplib::Request;
using httplib::Response;

static constexpr const char *HOST = "127.0.0.1";
static constexpr const char *JSON = "application/json";
static constexpr int PORTS_TRIED = 100;
static constexpr size_t MOST_CONNECTIONS = 200;
static constexpr int MOST_STREAMS = 100;    // the rest of the connections is for requests
static constexpr size_t LARGEST_BODY = 4096; // bytes
static constexpr time_t READ_SECONDS = 1;   // a connection that sends nothing for so long is closed
static constexpr time_t WRITE_SECONDS = 5;
static constexpr auto KEEP_ALIVE_PERIOD = 10s; // of comments on a stream with nothing new
static constexpr auto LIVENESS_PERIOD = 1s;    // of the look whether a stream's reader is still there

struct PageFile {
    const char *path;
    const char *file; // in the folder of the page
    const char *type;
};

static constexpr PageFile page_files[] = {
    {"/", "index.html", "text/html; charset=utf-8"},
    {"/inputs.js", "inputs.js", "text/javascript; charset=utf-8"},
    {"/lcd.js", "lcd.js", "text/javascript; charset=utf-8"},
    {"/panel.js", "panel.js", "text/javascript; charset=utf-8"},
    {"/settings.js", "settings.js", "text/javascript; charset=utf-8"},
    {"/style.css", "style.css", "text/css; charset=utf-8"},
    {"/icon.svg", "icon.svg", "image/svg+xml"},
};

static const httplib::Headers common_headers = {
    {"Cache-Control", "no-store"},
    {"Content-Security-Policy", "default-src 'self'; frame-ancestors 'none'; form-action 'none'; base-uri 'none'"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Referrer-Policy", "no-referrer"},
    {"X-Content-Type-Options", "nosniff"},
};

static void answer(Response &response, int status, const std::string &text)
{
    response.status = status;
    response.set_content(text + "\n", "text/plain; charset=utf-8");
}

/* What a request that no handler has answered is told. */
static std::string refusal(int status)
{
    switch (status) {
    case 404:
        return "no such path";
    case 413:
        return "a body has at most " + std::to_string(LARGEST_BODY) + " bytes";
    default:
        return "no request that can be understood";
    }
}

/* Binds to `port` or the next that is free, 0: to any. The port, 0 when there is none. */
static int bind_from(httplib::Server &server, int port)
{
    if (port == 0)
        return std::max(0, server.bind_to_any_port(HOST));
    for (int tried = port; tried < port + PORTS_TRIED && tried <= UINT16_MAX; ++tried)
        if (server.bind_to_port(HOST, tried))
            return tried;
    return 0;
}

PanelServer::PanelServer(Router &router, int port) : router_(router)
{
    server_.new_task_queue = [] { return new ConnectionThreads(MOST_CONNECTIONS); };
    server_.set_keep_alive_max_count(1);
    server_.set_keep_alive_timeout(READ_SECONDS);
    server_.set_read_timeout(READ_SECONDS);
    server_.set_write_timeout(WRITE_SECONDS);
    server_.set_payload_max_length(LARGEST_BODY);
    server_.set_tcp_nodelay(true);
    server_.set_default_headers(common_headers);
    add_guard();
    add_page();
    add_views();
    add_inputs();
    open_port(port);
    listener_ = std::thread([this] { server_.listen_after_bind(); });
    /* The library forgets a stop that comes before it listens. */
    while (!server_.is_running())
        std::this_thread::sleep_for(1ms);
}

void PanelServer::open_port(int port)
{
    /* Without the library's SO_REUSEPORT, with which two simulators would share one port. */
    server_.set_socket_options([this](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        socket_ = socket;
    });
    port_ = bind_from(server_, port);
    if (port_ == 0)
        throw std::runtime_error("no free port on " + std::string(HOST) + " from " + std::to_string(port) + " on");
    /* The library lets five connections wait; one more would try again only after a second. */
    listen(socket_, SOMAXCONN);
}

PanelServer::~PanelServer()
{
    router_.feed().close();
    server_.stop();
    listener_.join();
}

std::string PanelServer::address() const
{
    return "http://" + std::string(HOST) + ":" + std::to_string(port_);
}

/* Whether the request comes from our own page or from no page at all, and to us by a name that no other site can have:
 * neither can another site's page press a key, nor can a name that leads here make this page another site's. */
bool PanelServer::is_ours(const Request &request) const
{
    for (const std::string name : {HOST, "localhost"}) {
        const std::string host = name + ":" + std::to_string(port_);
        if (request.get_header_value("Host") == host)
            return !request.has_header("Origin") || request.get_header_value("Origin") == "http://" + host;
    }
    return false;
}

void PanelServer::add_guard()
{
    server_.set_pre_routing_handler([this](const Request &request, Response &response) {
        if (is_ours(request))
            return httplib::Server::HandlerResponse::Unhandled;
        answer(response, 403, "only for the panel's own page, at " + address());
        return httplib::Server::HandlerResponse::Handled;
    });
    server_.set_exception_handler([](const Request &, Response &response, std::exception_ptr exception) {
        try {
            std::rethrow_exception(exception);
        } catch (const std::exception &error) {
            answer(response, 500, error.what());
        }
    });
    server_.set_error_handler([](const Request &, Response &response) {
        if (response.body.empty())
            answer(response, response.status, refusal(response.status));
    });
}

void PanelServer::add_page()
{
    for (const PageFile &file : page_files) {
        server_.Get(file.path, [&file](const Request &, Response &response) {
            const auto text = read_file(std::filesystem::path(PAGE_FOLDER) / file.file);
            if (text)
                response.set_content(*text, file.type);
            else
                answer(response, 404, std::string(PAGE_FOLDER) + "/" + file.file + ": cannot be read");
        });
    }
}

void PanelServer::add_views()
{
    server_.Get("/stream", [this](const Request &, Response &response) { stream(response); });
    server_.Get("/frame", [this](const Request &, Response &response) {
        const Pixels pixels = router_.feed().news().picture.pixels;
        response.set_content(std::string(pixels.begin(), pixels.end()), "application/octet-stream");
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

struct StreamReader {
    News known = {}; // what it was told: at first nothing
    std::chrono::steady_clock::time_point spoken = std::chrono::steady_clock::now();
};

/* What `reader` has not been told of `news`. */
static std::string events_for(const StreamReader &reader, const News &news, uint64_t tick)
{
    std::string events;
    if (news.picture != reader.known.picture)
        events += frame_event(news.picture);
    if (news.state != reader.known.state)
        events += state_event(tick, *reader.known.state, *news.state);
    return events;
}

void PanelServer::stream(Response &response)
{
    if (++streams_ > MOST_STREAMS) {
        --streams_;
        answer(response, 503, "too many streams");
        return;
    }
    const auto send_next = [this, reader = std::make_shared<StreamReader>()](size_t, httplib::DataSink &sink) {
        const auto news = router_.feed().wait_for_other(reader->known, LIVENESS_PERIOD);
        const auto now = std::chrono::steady_clock::now();
        if (router_.feed().closed() || !sink.is_writable())
            return false;
        if (!news && now - reader->spoken < KEEP_ALIVE_PERIOD)
            return true;
        const std::string text = news ? events_for(*reader, *news, router_.clock().ticks()) : ":\n\n";
        reader->known = news.value_or(reader->known);
        reader->spoken = now;
        return sink.write(text.data(), text.size());
    };
    response.set_chunked_content_provider("text/event-stream", send_next, [this](bool) { --streams_; });
}

/* Lets `handle` answer POST requests that match `pattern`; it gets the body too. A request may come without one and
 * without its length: the library by itself would wait for more. */
template <typename Handle> void PanelServer::add_post(const char *pattern, Handle handle)
{
    server_.Post(pattern, [handle](const Request &request, Response &response, const httplib::ContentReader &read) {
        std::string body;
        const auto take = [&body](const char *data, size_t size) {
            body.append(data, size);
            return true;
        };
        const bool has_body = request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
        if (!has_body || read(take))
            handle(request, response, body);
    });
}

/* Gives an input its value. */
void PanelServer::answer_input(Response &response, const std::string &id, const std::string &value)
{
    const auto input = find_input(id);
    const std::string fault = input ? fault_of(*input, value) : "is no input: GET /inputs lists them";
    if (!fault.empty()) {
        answer(response, input ? 400 : 404, id + " " + fault);
        return;
    }
    set_input(router_, *input, value);
    response.status = 204;
}

void PanelServer::add_inputs()
{
    add_post("/input/(.+)", [this](const Request &request, Response &response, const std::string &value) {
        answer_input(response, request.matches[1], value);
    });
    add_post("/(key|event)/([^/]+)", [this](const Request &request, Response &response, const std::string &value) {
        answer_input(response, request.matches[1].str() + "." + request.matches[2].str(), value);
    });
    server_.Delete("/input/(.+)", [this](const Request &request, Response &response) {
        const std::string id = request.matches[1];
        const auto input = find_input(id);
        if (input && input->group == SETTINGS_GROUP) {
            remove_setting(router_.root(), std::string(input->target));
            response.status = 204;
        } else {
            answer(response, 404, id + " cannot be removed: only setting.KEY can");
        }
    });
}

} // namespace sim
