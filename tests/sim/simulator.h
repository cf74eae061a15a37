/* A running panel-sim with a router root of its own, ended and removed with its owner. */
#pragma once

#include "sim/fd.h"
#include "sim/files.h"
#include "sim/processes.h"
#include "sim/spawn.h"
#include "tests/tools/temp_folder.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <httplib.h>
#include <memory>
#include <sys/wait.h>
#include <thread>
#include <utility>
#include <vector>

/* Waits until `holds`; false when it does not within a time that only a fault can take. */
template <typename Condition> bool eventually(Condition holds)
{
    using namespace std::chrono_literals;
    const auto limit = std::chrono::steady_clock::now() + 20s;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > limit)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

/* panel-sim with `options`, its output in `log`. */
inline pid_t start_panel_sim(const std::vector<std::string> &options, const std::filesystem::path &log)
{
    const sim::Fd output(open(log.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    sim::Command command = {.arguments = {BUILT_BIN "/panel-sim", "--no-browser"},
                            .environment = sim::environment_with({}),
                            .output = output.get()};
    command.arguments.insert(command.arguments.end(), options.begin(), options.end());
    return sim::spawn(command);
}

/* How a process ended, as waitpid tells. */
inline int end_of(pid_t pid)
{
    int status = -1;
    waitpid(pid, &status, 0);
    return status;
}

/* What a shell command prints. */
inline std::string output_of(const std::string &command)
{
    FILE *output = popen(command.c_str(), "r");
    std::string text;
    for (int c; (c = std::fgetc(output)) != EOF;)
        text += static_cast<char>(c);
    pclose(output);
    return text;
}

class Simulator {
public:
    explicit Simulator(const std::string &speed = "100", const std::string &world = "healthy-home")
        : pid_(start_panel_sim({"--root", root(), "--port", "0", "--speed", speed, "--world", world}, log()))
    {
        EXPECT_TRUE(eventually([&] { return address().ends_with("/"); })) << printed();
        client = std::make_unique<httplib::Client>("127.0.0.1", port());
        client->set_read_timeout(60); // two minutes of router time at once, on a busy machine
        for (const char *program : {"frontpaneld", "network_status", "pc_monitor"})
            EXPECT_TRUE(eventually([&] { return pid_of(program) > 0; })) << printed();
    }
    ~Simulator()
    {
        if (pid_ > 0) {
            EXPECT_EQ(end(SIGTERM), 0) << printed();
        }
    }
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /* Ends it by `signal`; how, as waitpid tells. */
    int end(int signal)
    {
        kill(pid_, signal);
        return end_of(std::exchange(pid_, 0));
    }

    std::filesystem::path root() const { return folder_ / "root"; }
    std::string printed() const { return sim::read_file(log()).value_or(""); }
    int port() const { return std::stoi(address().substr(std::string("http://127.0.0.1:").size())); }

    /* What a file below the root holds; "" when there is none. */
    std::string file(const std::string &name) const { return sim::read_file(root() / name).value_or(""); }

    /* The process of a program of the router's; 0: it does not run. */
    pid_t pid_of(const std::string &program) const
    {
        for (const sim::RouterProcess &process : sim::router_processes(root()))
            if (process.program == program)
                return process.pid;
        return 0;
    }

    /* Runs a program of the router's; what it prints. */
    std::string run(const std::string &command) const
    {
        return output_of("PANEL_ROOT=" + root().string() + " " + (root() / command).string());
    }

    httplib::Response get(const std::string &path) { return *client->Get(path); }
    std::string state() { return get("/state").body; }
    bool has(const std::string &text) { return state().find(text) != std::string::npos; }
    unsigned long ticks() { return std::stoul(state().substr(std::string("{\"tick\":").size())); }

    /* What the LCD shows, as its driver got it. */
    std::string frame() { return get("/frame").body; }

    /* The status of the answer to a POST. */
    int post(const std::string &path, const std::string &body = "")
    {
        const auto result = client->Post(path, body, "text/plain");
        return result ? result->status : 0;
    }

    /* Gives an input its value; the answer's status. */
    int set(const std::string &id, const std::string &value) { return post("/input/" + id, value); }

    std::unique_ptr<httplib::Client> client;

private:
    std::filesystem::path log() const { return folder_ / "log"; }
    std::string address() const
    {
        const std::string text = printed();
        const size_t begin = text.find("http://"), end = text.find(' ', begin);
        return end == std::string::npos ? "" : text.substr(begin, end - begin);
    }

    const TempFolder folder_;
    pid_t pid_;
};
