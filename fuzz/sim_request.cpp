/* HTTP requests to the simulator's panel, one connection each, as the library takes them off its socket. */
#include "fuzz/fuzz.h"
#include "fuzz/sim_router.h"
#include "sim/inputs.h"
#include "sim/panel_server.h"
#include "sim/places.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>

static constexpr int PORT = 8064;
static constexpr int MOST_REQUESTS = 4; // of an input
static constexpr int MOST_WRITES = 4;   // of an answer: who reads a stream goes away then

/* What docs/simulator-http.md says that a request can be answered by; there is one stream at a time. */
static constexpr int statuses[] = {200, 204, 400, 403, 404, 413, 414, 416};

struct Route {
    const char *method, *path;
};

/* What the page asks for, and methods that it has no use for; more of path and query comes from the input. */
static constexpr Route routes[] = {
    {"POST", "/input/"},
    {"DELETE", "/input/setting."},
    {"POST", "/key/"},
    {"POST", "/event/"},
    {"POST", "/until-change?ticks="},
    {"POST", "/world"},
    {"GET", "/inputs"},
    {"GET", "/state"},
    {"GET", "/frame"},
    {"GET", "/stream"},
    {"GET", "/happenings?from="},
    {"GET", "/picture/"},
    {"GET", "/screenshot.png?look="},
    {"GET", "/recording.gif?from="},
    {"GET", "/script"},
    {"GET", "/worlds"},
    {"GET", "/"},
    {"HEAD", "/"},
    {"PUT", "/"},
    {"PRI", "/"},
};

/* How a body ends. */
enum class Framing { NONE, LENGTH, CHUNKED, NEVER, CHUNK_NEVER };

struct Request {
    std::string text;
    size_t body = 0;      // bytes, where they are known
    bool endless = false; // more of them come

    bool has_method(std::string_view method) const { return text.starts_with(std::string(method) + " "); }
};

/* The two ends of a connection: what is asked and what is answered. */
class MemoryStream : public httplib::Stream
{
public:
    explicit MemoryStream(const Request &request) : rest_(request.text), endless_(request.endless) {}

    bool is_readable() const override { return true; }
    bool is_writable() const override { return writes_ < MOST_WRITES; }
    ssize_t read(char *bytes, size_t size) override
    {
        if (rest_.empty() && endless_)
            rest_ = MORE;
        const size_t count = rest_.copy(bytes, size);
        rest_.remove_prefix(count);
        taken_ += count;
        require(!endless_ || taken_ < MOST_TAKEN, "no more is taken in than a body can have");
        return static_cast<ssize_t>(count);
    }
    ssize_t write(const char *bytes, size_t size) override
    {
        writes_++;
        answer.append(bytes, size);
        return static_cast<ssize_t>(size);
    }
    void get_remote_ip_and_port(std::string &ip, int &port) const override { ip = "127.0.0.1", port = 40000; }
    void get_local_ip_and_port(std::string &ip, int &port) const override { ip = "127.0.0.1", port = PORT; }
    socket_t socket() const override { return 0; }

    std::string answer;

private:
    static constexpr std::string_view MORE = "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx";
    static constexpr size_t MOST_TAKEN = 4 * sim::LARGEST_BODY;

    std::string_view rest_;
    const bool endless_;
    size_t taken_ = 0;
    int writes_ = 0;
};

/* The library without its socket; one that has none looks as if it were about to end. */
class MemoryServer : public httplib::Server
{
public:
    MemoryServer() { svr_sock_ = 0; }
    ~MemoryServer() override { svr_sock_ = -1; }

    std::string serve(const Request &request)
    {
        MemoryStream stream(request);
        bool closed = false;
        process_request(stream, true, closed, {});
        return stream.answer;
    }
};

struct Answer {
    int status;
    std::string type;
    bool encoded; // by the library, as the request allowed
    std::string body;
};

/* The value of a header; "" when there is none. */
static std::string header_of(const std::string &head, const std::string &name)
{
    const std::string before = "\r\n" + name + ": ";
    const size_t found = head.find(before), value = found + before.size();
    return found == std::string::npos ? "" : head.substr(value, head.find("\r\n", value) - value);
}

static std::string unchunked(std::string_view body)
{
    std::string text;
    while (!body.empty()) {
        const size_t line = body.find("\r\n");
        require(line != std::string_view::npos, "a chunk has its size");
        const size_t size = std::stoul(std::string(body.substr(0, line)), nullptr, 16);
        require(body.size() >= line + size + 4, "a chunk is whole");
        text += body.substr(line + 2, size);
        body.remove_prefix(line + size + 4);
    }
    return text;
}

static Answer parse_answer(std::string_view text, bool has_body)
{
    static constexpr std::string_view CONTINUE = "HTTP/1.1 100 Continue\r\n\r\n";
    if (text.starts_with(CONTINUE))
        text.remove_prefix(CONTINUE.size());
    const size_t end = text.find("\r\n\r\n");
    require(text.starts_with("HTTP/1.1 ") && end != std::string_view::npos, "an answer has a head");
    const std::string head(text.substr(0, end + 2));
    const std::string length = header_of(head, "Content-Length");
    std::string body(text.substr(end + 4));
    if (header_of(head, "Transfer-Encoding") == "chunked")
        body = unchunked(body);
    else if (has_body)
        require(body.size() == (length.empty() ? 0 : std::stoul(length)), "an answer has its length");
    return {std::stoi(head.substr(strlen("HTTP/1.1 "))), header_of(head, "Content-Type"),
            !header_of(head, "Content-Encoding").empty(), body};
}

static void check_events(std::string_view text)
{
    static constexpr std::string_view DATA = "data: ";
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        require(line.empty() || line.starts_with("event: ") || line.starts_with(':') || line.starts_with(DATA),
                "a line of a stream is one of an event");
        if (line.starts_with(DATA))
            require(nlohmann::json::accept(line.substr(DATA.size())), "an event has JSON");
    }
}

static void check_answer(const Answer &answer, const Request &request)
{
    require(std::ranges::find(statuses, answer.status) != std::end(statuses), "the status is a documented one");
    require(request.body <= sim::LARGEST_BODY || answer.status >= 400 || !request.has_method("POST"),
            "a body has its limit");
    if (answer.encoded || request.has_method("HEAD"))
        return;
    require(answer.status < 400 || !answer.body.empty(), "a refusal has its reason");
    if (answer.status != 200)
        return;
    if (answer.type == "application/json")
        require(nlohmann::json::accept(answer.body), "JSON is JSON");
    else if (answer.type == "text/event-stream")
        check_events(answer.body);
}

/* What one of the routes is asked for, but its other headers and its body. */
static std::string take_target(Input &in, const Route &route)
{
    std::string text = std::string(route.method) + " " + route.path;
    if (&route == routes) { // an input of the list, or any
        const auto inputs = sim::router_inputs();
        const int number = in.number(0, static_cast<int>(inputs.size()));
        text += number > 0 ? inputs[number - 1].id : "";
    }
    std::string rest = in.text();
    std::erase(rest, '\n'); // lines of its own have the texts that are no route's
    return text + rest + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(PORT) + "\r\n";
}

/* Some text again and again, until it is too large at the latest. */
static std::string take_body(Input &in)
{
    const int times = 1 << in.number(0, 12);
    const std::string once = in.text();
    std::string body;
    for (int i = 0; i < times && body.size() <= sim::LARGEST_BODY; i++)
        body += once;
    return body;
}

static Request take_request(Input &in)
{
    const int kind = in.number(0, static_cast<int>(std::size(routes)));
    if (kind == 0)
        return {in.text()};
    std::string text = take_target(in, routes[kind - 1]);
    const std::string headers = in.text();
    const auto framing = static_cast<Framing>(in.number(0, 4));
    if (framing == Framing::NEVER)
        return {text + "\r\n", 0, true};
    if (framing == Framing::CHUNK_NEVER)
        return {text + "Transfer-Encoding: chunked\r\n\r\nffffff\r\n", 0, true};
    if (!headers.empty())
        text += headers + "\r\n";
    if (framing == Framing::NONE)
        return {text + "\r\n"};
    const std::string body = take_body(in);
    const size_t known = headers.empty() ? body.size() : 0; // they may tell another end
    if (framing == Framing::LENGTH)
        return {text + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body, known};
    char size[16];
    snprintf(size, sizeof size, "%zx", body.size());
    return {text + "Transfer-Encoding: chunked\r\n\r\n" + size + "\r\n" + body + "\r\n0\r\n\r\n", known};
}

/* What tells that a request has done anything. */
struct Trace {
    uint64_t writes, happenings, picture, ticks;
    unsigned speed;
    time_t time;
    std::vector<std::string> parameters;

    explicit Trace(sim::Router &router)
        : writes(sim_router_writes()), happenings(router.feed().news().next_happening),
          picture(router.feed().news().picture.number), ticks(router.clock().ticks()), speed(router.clock().speed()),
          time(router.time())
    {
        for (const sim::Input &input : sim::router_inputs())
            if (input.place == &sim::parameter_place)
                parameters.push_back(router.parameters().text(input.id));
    }
    bool operator==(const Trace &) const = default;
};

void fuzz(Input &in)
{
    static sim::Router &router = renew_sim_router();
    static MemoryServer server;
    static const sim::PanelRoutes panel(router, server, PORT);
    Trace before(router);
    bool changed = false;
    for (int i = 0; i < MOST_REQUESTS && !in.empty(); i++) {
        const Request request = take_request(in);
        const std::string text = server.serve(request);
        if (text.empty()) {
            require(request.text.find('\n') == std::string::npos, "a request has an answer");
            continue;
        }
        const Answer answer = parse_answer(text, !request.has_method("HEAD"));
        check_answer(answer, request);
        if (Trace(router) == before)
            continue;
        require(answer.status < 400, "a refused request changes nothing");
        run_sim_router();
        before = Trace(router);
        changed = true;
    }
    if (changed)
        renew_sim_router();
}
