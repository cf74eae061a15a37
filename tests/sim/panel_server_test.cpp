#include "tests/sim/simulator.h"

#include <sys/socket.h>

struct Request {
    const char *method;
    std::string path, body = "";
    httplib::Headers headers = {}; // without "Host": the simulator's own
};

TEST(PanelServer, RefusesWhatIsNotItsOwn)
{
    Simulator simulator("pause");
    const std::string port = std::to_string(simulator.port());
    const std::string long_key = "/input/setting." + std::string(2000, 'k'), long_text(5000, 'x');
    const std::pair<int, std::vector<Request>> refusals[] = {
        {403,
         {{"POST", "/key/ok", "", {{"Origin", "http://elsewhere.example"}}},
          {"POST", "/key/ok", "", {{"Origin", "null"}}},
          {"POST", "/key/ok", "", {{"Origin", "http://127.0.0.1:1"}}},
          {"POST", "/key/ok", "", {{"Origin", "http://localhost:" + port}}}, // another origin than the host's
          {"POST", "/key/ok", "", {{"Host", "elsewhere.example:" + port}}},
          {"POST", "/key/ok", "", {{"Host", "127.0.0.1"}}},
          {"GET", "/state", "", {{"Host", "elsewhere.example:" + port}}}}},
        {404,
         {{"POST", "/key/OK"}, {"POST", "/event/rain"}, {"POST", "/input/link.moon", "on"},
          {"POST", "/input/setting.", "x"}, {"POST", "/input/setting.a=b", "x"}, {"POST", "/input/setting.a%20b", "x"},
          {"DELETE", "/input/link.wan"}, {"GET", "/index.html"}, {"GET", "/%2e%2e/main.cpp"}, {"GET", "/picture/99"}}},
        {400,
         {{"POST", "/key/ok", "twice"}, {"POST", "/input/link.wan", "up"}, {"POST", "/world", "../worlds/guests"},
          {"POST", "/until-change?ticks=0"}, {"POST", "/until-change?ticks=72001"}, {"GET", "/happenings?from=-1"},
          {"GET", "/picture/1.png?scale=0"}, {"GET", "/screenshot.png?scale=17"}, {"GET", "/screenshot.png?look=oil"},
          {"GET", "/recording.gif?from=5&to=4"}}},
        {413, {{"POST", "/input/info.text", long_text}}},
        {414, {{"POST", long_key, "x"}}},
    };
    const std::string before = simulator.state();
    for (const auto &[status, requests] : refusals)
        for (const auto &[method, path, body, headers] : requests) {
            httplib::Request request;
            request.method = method;
            request.path = path;
            request.body = body;
            request.headers = headers;
            const auto result = simulator.client->send(request);
            ASSERT_TRUE(result) << path;
            EXPECT_EQ(result->status, status) << path;
            EXPECT_FALSE(result->body.empty()) << path;
        }
    EXPECT_EQ(simulator.state(), before);

    const httplib::Headers own = {{"Host", "localhost:" + port}, {"Origin", "http://localhost:" + port}};
    EXPECT_EQ(simulator.client->Post("/key/ok", own, "", "text/plain")->status, 204);
    const httplib::Response page = simulator.get("/");
    EXPECT_FALSE(page.has_header("Access-Control-Allow-Origin"));
    EXPECT_TRUE(page.get_header_value("Content-Security-Policy").starts_with("default-src 'self'; frame-anc"));
}

TEST(PanelServer, AnswersAmidIdleConnections)
{
    Simulator simulator("1");
    std::vector<sim::Fd> idle;
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(simulator.port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (int i = 0; i < 1000; ++i) {
        idle.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        ASSERT_EQ(connect(idle.back().get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    }
    EXPECT_EQ(simulator.set("key.ok", ""), 204);
}
