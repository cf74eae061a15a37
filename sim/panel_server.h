/* The web panel: the page, a stream of what the LCD shows and of what changes, and a call for everything that can be
 * done to the router. docs/simulator-http.md tells how to use it.
 *
 * It listens on 127.0.0.1 alone. A request that names another host, or that a page from elsewhere has made, is refused
 * (403); a bad value is told (400). */
#pragma once

#include "sim/router.h"

#include <atomic>
#include <httplib.h>
#include <optional>
#include <stdexcept>
#include <thread>

namespace sim {

constexpr int MOST_STREAMS = 100;
constexpr size_t LARGEST_BODY = 4096; // bytes of a request

/* A request that cannot be: answered by 400 with the reason. */
struct BadRequest : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/* A request for what is not there: answered by 404. */
struct NotFound : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void answer(httplib::Response &response, int status, const std::string &text);

/* The parameter `name` of a request, a number from `least` to `most`; `without` when there is none. Throws
 * BadRequest. */
uint64_t number_of(const httplib::Request &request, const char *name, uint64_t least, uint64_t most,
                   std::optional<uint64_t> without);

/* What the panel answers. */
class PanelRoutes {
public:
    /* Adds them for `router` to `server`, which is reached at `port`. They live as long as it listens. */
    PanelRoutes(Router &router, httplib::Server &server, int port);
    PanelRoutes(const PanelRoutes &) = delete;
    PanelRoutes &operator=(const PanelRoutes &) = delete;

    /* "http://127.0.0.1:8064" */
    std::string address() const;

private:
    void add_guard();
    void add_page();
    void add_views();
    void add_time_line();
    void add_pictures();
    void add_inputs();
    void refuse_other_bodies();
    void answer_input(httplib::Response &response, const std::string &id, const std::string &value);
    bool is_ours(const httplib::Request &request) const;
    void answer_until_change(httplib::Response &response, uint64_t ticks);
    void answer_world(httplib::Response &response, const std::string &name);
    Picture kept_picture(const httplib::Request &request) const;
    void stream(httplib::Response &response);

    Router &router_;
    httplib::Server &server_;
    const int port_;
    std::atomic<int> streams_ = 0;
};

class PanelServer {
public:
    /* Serves `router` at `port`, or at the next one that is free; 0: at any. Throws std::runtime_error. */
    PanelServer(Router &router, int port);
    ~PanelServer();

    std::string address() const { return routes_.address(); }

private:
    int open_port(int port);

    Router &router_;
    int socket_ = -1; // listens; the library's own
    httplib::Server server_;
    PanelRoutes routes_;
    std::thread listener_;
};

} // namespace sim
