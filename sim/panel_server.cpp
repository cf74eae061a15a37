#include "sim/panel_server.h"

#include "sim/connection_threads.h"
#include "sim/files.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace sim {

using namespace std::chrono_literals;
using httplib::Request;
using httplib::Response;

static constexpr const char *HOST = "127.0.0.1";
static constexpr int PORTS_TRIED = 100;
static constexpr size_t MOST_CONNECTIONS = 200; // of which streams may be MOST_STREAMS
static constexpr size_t LONGEST_PATH = 1024; // bytes; the library matches it with a recursion for each
static constexpr time_t READ_SECONDS = 1;   // a connection that sends nothing for so long is closed
static constexpr time_t WRITE_SECONDS = 5;

struct PageType {
    std::string_view ending, type;
};

static constexpr PageType page_types[] = {
    {".html", "text/html; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".svg", "image/svg+xml"},
};

static const httplib::Headers common_headers = {
    {"Cache-Control", "no-store"},
    {"Content-Security-Policy", "default-src 'self'; frame-ancestors 'none'; form-action 'none'; base-uri 'none'"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Referrer-Policy", "no-referrer"},
    {"X-Content-Type-Options", "nosniff"},
};

void answer(Response &response, int status, const std::string &text)
{
    response.status = status;
    response.set_content(text + "\n", "text/plain; charset=utf-8");
}

uint64_t number_of(const Request &request, const char *name, uint64_t least, uint64_t most,
                   std::optional<uint64_t> without)
{
    if (without && !request.has_param(name))
        return *without;
    const std::string text = request.get_param_value(name);
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < least || number > most)
        throw BadRequest(std::string(name) + " takes a number from " + std::to_string(least) + " to " +
                         std::to_string(most));
    return number;
}

/* What a request that no handler has answered is told. */
static std::string refusal(int status)
{
    switch (status) {
    case 404:
        return "no such path";
    case 413:
        return "a body has at most " + std::to_string(LARGEST_BODY) + " bytes";
    case 416:
        return "no range that can be understood";
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

PanelServer::PanelServer(Router &router, int port) : router_(router), routes_(router, server_, open_port(port))
{
    server_.new_task_queue = [] { return new ConnectionThreads(MOST_CONNECTIONS); };
    server_.set_keep_alive_max_count(1);
    server_.set_keep_alive_timeout(READ_SECONDS);
    server_.set_read_timeout(READ_SECONDS);
    server_.set_write_timeout(WRITE_SECONDS);
    listener_ = std::thread([this] { server_.listen_after_bind(); });
    /* The library forgets a stop that comes before it listens. */
    while (!server_.is_running())
        std::this_thread::sleep_for(1ms);
}

/* The port that is open then. */
int PanelServer::open_port(int port)
{
    server_.set_tcp_nodelay(true);
    /* Without the library's SO_REUSEPORT, with which two simulators would share one port. */
    server_.set_socket_options([this](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        socket_ = socket;
    });
    const int bound = bind_from(server_, port);
    if (bound == 0)
        throw std::runtime_error("no free port on " + std::string(HOST) + " from " + std::to_string(port) + " on");
    /* The library lets five connections wait; one more would try again only after a second. */
    listen(socket_, SOMAXCONN);
    return bound;
}

PanelServer::~PanelServer()
{
    router_.feed().close();
    server_.stop();
    listener_.join();
}

PanelRoutes::PanelRoutes(Router &router, httplib::Server &server, int port)
    : router_(router), server_(server), port_(port)
{
    server_.set_payload_max_length(LARGEST_BODY);
    server_.set_default_headers(common_headers);
    add_guard();
    add_page();
    add_views();
    add_time_line();
    add_pictures();
    add_inputs();
    refuse_other_bodies();
}

std::string PanelRoutes::address() const
{
    return "http://" + std::string(HOST) + ":" + std::to_string(port_);
}

/* Whether the request comes from our own page or from no page at all, and to us by a name that no other site can have:
 * neither can another site's page press a key, nor can a name that leads here make this page another site's. */
bool PanelRoutes::is_ours(const Request &request) const
{
    for (const std::string name : {HOST, "localhost"}) {
        const std::string host = name + ":" + std::to_string(port_);
        if (request.get_header_value("Host") == host)
            return !request.has_header("Origin") || request.get_header_value("Origin") == "http://" + host;
    }
    return false;
}

void PanelRoutes::add_guard()
{
    server_.set_pre_routing_handler([this](const Request &request, Response &response) {
        /* The library would give parts even of a refusal, and of a large answer as many as are asked for. */
        const_cast<Request &>(request).ranges.clear();
        if (!is_ours(request))
            answer(response, 403, "only for the panel's own page, at " + address());
        else if (request.path.size() > LONGEST_PATH)
            answer(response, 414, "a path has at most " + std::to_string(LONGEST_PATH) + " bytes");
        else if (request.method == "PRI")
            response.status = 400; // nobody can stop the library from taking its body in
        else
            return httplib::Server::HandlerResponse::Unhandled;
        return httplib::Server::HandlerResponse::Handled;
    });
    server_.set_exception_handler([](const Request &, Response &response, const std::exception_ptr &exception) {
        try {
            std::rethrow_exception(exception);
        } catch (const BadRequest &error) {
            answer(response, 400, error.what());
        } catch (const NotFound &error) {
            answer(response, 404, error.what());
        } catch (const std::exception &error) {
            answer(response, 500, error.what());
        }
    });
    server_.set_error_handler([](const Request &, Response &response) {
        if (response.body.empty())
            answer(response, response.status, refusal(response.status));
    });
}

/* The page is its folder; what has another ending is no part of it. */
void PanelRoutes::add_page()
{
    for (const auto &entry : std::filesystem::directory_iterator(PAGE_FOLDER)) {
        const std::filesystem::path &file = entry.path();
        const auto type = std::ranges::find(page_types, file.extension().string(), &PageType::ending);
        if (type == std::end(page_types))
            continue;
        const std::string path = file.filename() == "index.html" ? "/" : "/" + file.filename().string();
        server_.Get(path, [file, type](const Request &, Response &response) {
            const auto text = read_file(file);
            if (text)
                response.set_content(*text, std::string(type->type));
            else
                answer(response, 404, file.string() + ": cannot be read");
        });
    }
}

} // namespace sim
