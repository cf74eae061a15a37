/* panel-sim --terminal in a terminal that tmux plays. */
#include "tests/sim/simulator.h"
#include "tests/terminal/cells.h"

static const std::string HOST = "http://127.0.0.1:";

static std::string tmux(const std::string &command)
{
    return output_of("tmux -u -f /dev/null -L panel-test-" + std::to_string(getpid()) + " " + command);
}

static std::string screen()
{
    return tmux("capture-pane -p");
}

static bool shows(const std::string &part)
{
    return eventually([&] { return screen().find(part) != std::string::npos; });
}

static void press(const std::string &keys)
{
    tmux("send-keys " + keys);
}

static void resize(int columns, int lines)
{
    tmux("resize-window -x " + std::to_string(columns) + " -y " + std::to_string(lines));
}

/* The terminal's screen is the shell's, with its cursor. */
static bool is_given_back()
{
    return tmux("display -p '#{alternate_on}#{cursor_flag}'") == "01\n";
}

constexpr unsigned long SPLASH_TICKS = 1000; // after so many the splash is over

/* panel-sim in a shell's terminal; its LCD shows the main menu, and its clock stands still. */
class TerminalTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!output_of("tmux -V").starts_with("tmux "))
            GTEST_SKIP() << "no tmux here";
        std::ofstream(path("run")) << "trap : INT\ncd " << path(".").string() << "\nstty -g > before\n"
                                   << "sh -c 'echo $$ > pid; exec " BUILT_BIN "/panel-sim --terminal --speed 100 "
                                   << "--port 0 --root router'\nwhile :; do stty -g > after; sleep 0.1; done\n";
        tmux("new-session -d -x 132 -y 43 'exec env LC_ALL=C.UTF-8 bash --norc -i'");
        press("'sh " + path("run").string() + "' Enter");
        ASSERT_TRUE(shows(HOST)) << screen();
        const std::string text = screen();
        client_ = std::make_unique<httplib::Client>("127.0.0.1", std::stoi(text.substr(text.find(HOST) + HOST.size())));
        ASSERT_TRUE(eventually([this] { return std::stoul(get("/state").substr(8)) > SPLASH_TICKS; }));
        press("Space");
        ASSERT_TRUE(has("\"clock.speed\":\"pause\""));
        const std::string status = frame();
        press("m");
        ASSERT_TRUE(eventually([&] { return frame() != status; }));
    }

    void TearDown() override { tmux("kill-server"); }

    std::filesystem::path path(const std::string &name) const { return folder_ / name; }
    std::string file(const std::string &name) const { return sim::read_file(path(name)).value_or(""); }

    std::string get(const char *path) const
    {
        const auto result = client_->Get(path);
        return result ? result->body : "";
    }
    std::string frame() const { return get("/frame"); }
    bool shows_frame(unsigned columns, unsigned lines) const
    {
        return eventually([&] { return decoded_picture(screen(), columns, lines) == frame(); });
    }
    bool has(const std::string &value) const
    {
        return eventually([&] { return get("/state").find(value) != std::string::npos; });
    }

    /* The terminal is the shell's again and nothing of the router runs. */
    bool ends_in_order() const
    {
        return eventually([&] {
            return !file("after").empty() && file("after") == file("before") && is_given_back() &&
                   sim::router_processes(path("router")).empty();
        });
    }

    const TempFolder folder_;
    std::unique_ptr<httplib::Client> client_;
};

TEST_F(TerminalTest, ShowsTheSamePictureAsThePageInWindowsOfAnySize)
{
    EXPECT_TRUE(shows_frame(128, 32)) << screen();
    resize(80, 24);
    EXPECT_TRUE(shows_frame(64, 16)) << screen();
    resize(80, 43);
    EXPECT_TRUE(shows_frame(64, 32)) << screen();
    resize(40, 10);
    EXPECT_TRUE(shows("This terminal has 40 x 10")) << screen();
    resize(200, 60);
    EXPECT_TRUE(shows_frame(128, 32)) << screen();
    press("q");
    EXPECT_TRUE(ends_in_order()) << screen();
}

TEST_F(TerminalTest, KeysReachThePanelAndEveryInput)
{
    const std::string before = frame();
    press("Down");
    EXPECT_TRUE(eventually([&] { return frame() != before; }));
    EXPECT_TRUE(shows_frame(128, 32)) << screen();
    press("Tab PageDown Right");
    EXPECT_TRUE(has("\"link.internet\":\"blink\"")) << screen();
    press("End Home Down Down Down Enter");
    press("-l 'x'");
    press("Enter");
    EXPECT_TRUE(shows("takes a time like")) << screen();
    press("DC");
    press("-l 2024-03-10T12:30:00");
    press("Enter");
    EXPECT_TRUE(has("\"clock.time\":\"2024-03-10T12:30:0")) << screen();
    press("C-c");
    EXPECT_TRUE(ends_in_order()) << screen();
}

TEST_F(TerminalTest, StopsAndGoesOnAsAShellHasIt)
{
    press("C-z");
    EXPECT_TRUE(shows("Stopped") && is_given_back()) << screen();
    press("fg Enter");
    EXPECT_TRUE(shows_frame(128, 32)) << screen();
    kill(std::stoi(file("pid")), SIGTERM);
    EXPECT_TRUE(ends_in_order()) << screen();
}

TEST_F(TerminalTest, LeavesAWholeTerminalEvenWhenItIsKilled)
{
    kill(std::stoi(file("pid")), SIGKILL);
    EXPECT_TRUE(ends_in_order()) << screen();
}

TEST_F(TerminalTest, EndsWithItsTerminal)
{
    tmux("kill-server");
    const pid_t panel = std::stoi(file("pid"));
    EXPECT_TRUE(eventually([&] { return kill(panel, 0) < 0 && sim::router_processes(path("router")).empty(); }));
}
