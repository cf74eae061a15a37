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

class PanelServer {
public:
    /* Serves `router` at `port`, or at the next one that is free; 0: at any. Throws std::runtime_error. */
    PanelServer(Router &router, int port);
    ~PanelServer();

    /* "http://127.0.0.1:8064" */
    std::string address() const;

private:
    void open_port(int port);
    void add_guard();
    void add_page();
    void add_views();
    void add_time_line();
    void add_pictures();
    void add_inputs();
    void answer_input(httplib::Response &response, const std::string &id, const std::string &value);
    bool is_ours(const httplib::Request &request) const;
    void answer_until_change(httplib::Response &response, uint64_t ticks);
    void answer_world(httplib::Response &response, const std::string &name);
    Picture kept_picture(const httplib::Request &request) const;
    void stream(httplib::Response &response);

    Router &router_;
    httplib::Server server_;
    int socket_ = -1; // listens; the library's own
    int port_ = 0;
    std::atomic<int> streams_ = 0;
    std::thread listener_;
};

} // namespace sim
