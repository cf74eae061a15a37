#include "tests/sim/simulator.h"

#include <sys/socket.h>

struct Refusal {
    const char *path;
    httplib::Headers headers; // "Host" for the simulator's own port: 127.0.0.1
    std::string body;
    int status;
};

TEST(PanelServer, RefusesWhatIsNotItsOwn)
{
    Simulator simulator("1");
    const std::string port = std::to_string(simulator.port());
    const std::vector<Refusal> refusals = {
        {"/key/ok", {{"Origin", "http://elsewhere.example"}}, "", 403},
        {"/key/ok", {{"Origin", "null"}}, "", 403},
        {"/key/ok", {{"Origin", "http://127.0.0.1:1"}}, "", 403},
        {"/key/ok", {{"Origin", "http://localhost:" + port}}, "", 403}, // another origin than the host's
        {"/key/ok", {{"Host", "elsewhere.example:" + port}}, "", 403},
        {"/key/ok", {{"Host", "127.0.0.1"}}, "", 403},
        {"/key/power", {}, "", 404},
        {"/key/OK", {}, "", 404},
        {"/key/ok", {}, "twice", 400},
        {"/event/rain", {}, "", 404},
        {"/input/", {}, "", 404},
        {"/input/link.moon", {}, "on", 404},
        {"/input/info.text", {}, std::string(5000, 'x'), 413},
        {"/input/setting.", {}, "x", 404},
        {"/input/setting.a=b", {}, "x", 404},
        {"/input/setting.two%20words", {}, "x", 404},
        {"/key", {}, "", 404},
        {"/../etc/passwd", {}, "", 404},
        {"/until-change", {}, "", 400},
        {"/until-change?ticks=0", {}, "", 400},
        {"/until-change?ticks=72001", {}, "", 400},
        {"/world", {}, "atlantis", 400},
        {"/world", {}, "../worlds/guests", 400},
    };
    const std::string settings = simulator.file("nvram/running");
    for (const Refusal &refusal : refusals) {
        const auto result = simulator.client->Post(refusal.path, refusal.headers, refusal.body, "text/plain");
        ASSERT_TRUE(result) << refusal.path;
        EXPECT_EQ(result->status, refusal.status) << refusal.path;
        EXPECT_FALSE(result->body.empty()) << refusal.path;
    }
    EXPECT_FALSE(std::filesystem::exists(simulator.root() / "tmp/lcd/lcd_action"));
    EXPECT_FALSE(std::filesystem::exists(simulator.root() / "tmp/lcd/lcd_info"));
    EXPECT_EQ(simulator.file("nvram/running"), settings);

    const httplib::Headers elsewhere = {{"Host", "elsewhere.example:" + port}};
    EXPECT_EQ(simulator.client->Get("/state", elsewhere)->status, 403);
    const std::pair<const char *, int> views[] = {
        {"/simulator.h", 404},           {"/picture/99999", 404},          {"/picture/0.png", 404},
        {"/picture/1.png?scale=0", 400}, {"/screenshot.png?scale=17", 400}, {"/screenshot.png?look=oil", 400},
        {"/happenings?from=-1", 400},    {"/recording.gif?from=5&to=4", 400}, {"/recording.gif?from=999999", 400},
    };
    for (const auto &[path, status] : views)
        EXPECT_EQ(simulator.get(path).status, status) << path;
    const httplib::Headers own = {{"Host", "localhost:" + port}, {"Origin", "http://localhost:" + port}};
    EXPECT_EQ(simulator.client->Post("/key/ok", own, "", "text/plain")->status, 204);
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
    EXPECT_EQ(simulator.post("/key/ok"), 204);
}

TEST(PanelServer, ServesThePageAlone)
{
    Simulator simulator("1");
    for (const char *path : {"/", "/panel.js", "/style.css", "/icon.svg"}) {
        const auto result = simulator.client->Get(path);
        EXPECT_EQ(result->status, 200) << path;
        EXPECT_FALSE(result->has_header("Access-Control-Allow-Origin"));
        EXPECT_NE(result->get_header_value("Content-Security-Policy").find("default-src 'self'"), std::string::npos);
    }
    EXPECT_EQ(simulator.client->Get("/index.html")->status, 404);
    EXPECT_EQ(simulator.client->Get("/%2e%2e/main.cpp")->status, 404);
}
