/* The web panel: the page, a stream of what the LCD shows and of what changes, and a call for everything that can be
 * done to the router. docs/simulator-http.md tells how to use it.
 *
 * It listens on 127.0.0.1 alone. A request that names another host, or that a page from elsewhere has made, is refused
 * (403); a bad value is told (400). */
#pragma once

#include "sim/router.h"

#include <atomic>
#include <httplib.h>
#include <thread>

namespace sim {

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
    void add_inputs();
    void answer_input(httplib::Response &response, const std::string &id, const std::string &value);
    bool is_ours(const httplib::Request &request) const;
    template <typename Handle> void add_post(const char *pattern, Handle handle);
    void stream(httplib::Response &response);

    Router &router_;
    httplib::Server server_;
    int socket_ = -1; // listens; the library's own
    int port_ = 0;
    std::atomic<int> streams_ = 0;
    std::thread listener_;
};

} // namespace sim
