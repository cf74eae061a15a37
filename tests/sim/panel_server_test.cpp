#include "core/display.h"
#include "sim/local_socket.h"
#include "sim/router_files.h"
#include "tests/sim/simulator.h"

#include <algorithm>
#include <linux/netlink.h>
#include <sys/socket.h>

TEST(PanelServer, WritesEachKeyForTheDaemon)
{
    Simulator simulator("1");
    for (const std::string key : {"up", "down", "left", "right", "ok", "menu"}) {
        EXPECT_EQ(simulator.post("/key/" + key), 204);
        EXPECT_EQ(simulator.file("tmp/lcd/lcd_action"), key + "\n");
    }
}

TEST(PanelServer, WritesEachEventForTheDaemon)
{
    Simulator simulator("1");
    for (const std::string event : {"lost-link", "lost-internet", "restore-internet", "save-config-start",
                                    "save-config-end", "setup-wizard-start", "setup-wizard-end", "info"}) {
        EXPECT_EQ(simulator.post("/event/" + event), 204);
        std::string words = event;
        std::replace(words.begin(), words.end(), '-', ' ');
        EXPECT_EQ(simulator.file("tmp/lcd/lcd_event"), words + "\n");
        EXPECT_EQ(simulator.file("tmp/lcd/lcd_action"), "event\n");
    }
}

/* The whole way: file, signal, daemon, frame. */
TEST(PanelServer, AKeyAndAnEventChangeThePicture)
{
    Simulator simulator("pause");
    ASSERT_EQ(simulator.set("clock.jump", ""), 204); // over the splash
    const std::string home = simulator.frame();
    EXPECT_EQ(simulator.post("/key/menu"), 204);
    const std::string menu = simulator.frame_after(home);
    EXPECT_EQ(simulator.post("/event/lost-link"), 204);
    EXPECT_NE(simulator.frame_after(menu), home);
}

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
    EXPECT_EQ(simulator.client->Get("/simulator.h")->status, 404);
    const httplib::Headers own = {{"Host", "localhost:" + port}, {"Origin", "http://localhost:" + port}};
    EXPECT_EQ(simulator.client->Post("/key/ok", own, "", "text/plain")->status, 204);
}

/* A message to the LCD driver with `payload`. */
static std::string message(const std::string &payload, uint16_t type)
{
    nlmsghdr header = {};
    header.nlmsg_len = static_cast<uint32_t>(sizeof header + payload.size());
    header.nlmsg_type = type;
    return std::string(reinterpret_cast<const char *>(&header), sizeof header) + payload;
}

TEST(PanelServer, StreamsEachFrame)
{
    Simulator simulator("1");
    const sim::Fd display = sim::connect_socket(simulator.root(), sim::DISPLAY_SOCKET);
    const auto show = [&](const std::string &text) {
        EXPECT_EQ(send(display.get(), text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    };
    const std::string first(LCD_FRAME_BYTES, '\x3c'), second(LCD_FRAME_BYTES, '\xa5');
    const auto is_shown = [&](const std::string &frame) { return simulator.frame() == frame; };
    kill(simulator.pid_of("frontpaneld"), SIGSTOP); // its own frames would come between
    ASSERT_TRUE(eventually([&] {
        show(message(first, LCD_MSG_TYPE));
        return is_shown(first);
    }));

    std::string received;
    bool sent = false;
    httplib::Client reader("127.0.0.1", simulator.port());
    reader.Get("/stream", [&](const char *data, size_t size) {
        received.append(data, size);
        if (!sent && received.find("3c3c3c") != std::string::npos) {
            sent = true; // the newest frame came at once
            show(message(second, LCD_MSG_TYPE + 1));
            show(message(second + "x", LCD_MSG_TYPE));
            show(message("", LCD_MSG_TYPE));
            show(message(second, LCD_MSG_TYPE));
        }
        return received.find("a5a5a5") == std::string::npos;
    });
    EXPECT_TRUE(sent);
    EXPECT_TRUE(received.starts_with("event: frame\ndata: {\"tick\":")) << received;
    EXPECT_TRUE(is_shown(second));
}

TEST(PanelServer, AnswersAmidIdleConnections)
{
    Simulator simulator("1");
    std::vector<sim::Fd> idle;
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(simulator.port()));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (int i = 0; i < 300; ++i) {
        idle.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        ASSERT_EQ(connect(idle.back().get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    }
    EXPECT_EQ(simulator.post("/key/ok"), 204);
}

TEST(PanelServer, ServesThePageAlone)
{
    Simulator simulator("1");
    for (const char *path : {"/", "/panel.js", "/inputs.js", "/settings.js", "/lcd.js", "/style.css", "/icon.svg"}) {
        const auto result = simulator.client->Get(path);
        EXPECT_EQ(result->status, 200) << path;
        EXPECT_FALSE(result->has_header("Access-Control-Allow-Origin"));
        EXPECT_NE(result->get_header_value("Content-Security-Policy").find("default-src 'self'"), std::string::npos);
    }
    EXPECT_EQ(simulator.client->Get("/index.html")->status, 404);
    EXPECT_EQ(simulator.client->Get("/%2e%2e/main.cpp")->status, 404);
}
