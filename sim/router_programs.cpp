/* The router's own programs, as far as the daemon and who sits at the panel can tell: one program of many names. */
#include "sim/control.h"
#include "sim/files.h"
#include "sim/processes.h"
#include "sim/router_files.h"
#include "sim/router_time.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

using namespace sim;

using Arguments = std::vector<std::string>;

static std::filesystem::path root;

static std::string join(const Arguments &words)
{
    std::string line;
    for (const std::string &word : words)
        line += (line.empty() ? "" : " ") + word;
    return line;
}

static int run_echo(const Arguments &arguments)
{
    std::printf("%s\n", join(arguments).c_str());
    return 0;
}

/* Lets some of the machine's time pass. False when the simulator has gone: nothing will happen any more. */
static bool wait_a_moment(std::chrono::milliseconds time)
{
    std::this_thread::sleep_for(time);
    return simulator_runs(root);
}

static int run_sleep(const Arguments &arguments)
{
    const uint64_t ticks = arguments.empty() ? 0 : std::strtoull(arguments[0].c_str(), nullptr, 10) * TICKS_PER_SECOND;
    const auto start = read_router_time(root);
    for (auto now = start; now; now = read_router_time(root)) {
        if (now->ticks - start->ticks >= ticks)
            return 0;
        if (!wait_a_moment(std::chrono::milliseconds(5)))
            break;
    }
    return 1;
}

static int run_ps(const Arguments &)
{
    std::printf("    PID TTY          TIME CMD\n");
    for (const RouterProcess &process : router_processes(root))
        std::printf("%7d ?        00:00:00 %s\n", process.pid, process.program.c_str());
    return 0;
}

static int run_reboot(const Arguments &)
{
    return tell_simulator(root, "reboot") ? 0 : 1;
}

static int run_rc(const Arguments &arguments)
{
    return tell_simulator(root, "rc " + join(arguments)) ? 0 : 1;
}

/* The register tool: "0x4048" reads the switch register, "0x4048=0x..." writes it. What is written drives the panel's
 * backlight and is not what can be read: the state of the ports. */
static int run_5416regc(const Arguments &arguments)
{
    static constexpr std::string_view SWITCH_REGISTER = "0x4048";
    const std::string argument = join(arguments);
    if (argument == SWITCH_REGISTER) {
        std::printf("5416:4048 %s", read_file(root / REGISTER_FILE).value_or("\n").c_str());
        return 0;
    }
    if (!argument.starts_with(std::string(SWITCH_REGISTER) + "=")) {
        std::fprintf(stderr, "5416regc: no such register: %s\n", argument.c_str());
        return 1;
    }
    return tell_simulator(root, "register " + argument.substr(SWITCH_REGISTER.size() + 1)) ? 0 : 1;
}

/* Of a channel, in GHz. */
static double frequency(unsigned channel)
{
    const double megahertz = channel <= 14 ? 2407 + 5 * channel : 5000 + 5 * channel;
    return megahertz / 1000;
}

static int run_iwlist(const Arguments &)
{
    const std::string line = read_file(root / CHANNEL_FILE).value_or("");
    const auto channel = static_cast<unsigned>(std::strtoul(line.c_str(), nullptr, 10));
    std::printf("ath0      13 channels in total; available frequencies :\n");
    for (unsigned each = 1; each <= 13; ++each)
        std::printf("          Channel %02u : %.3f GHz\n", each, frequency(each));
    std::printf("          Current Frequency:%.3f GHz (Channel %u)\n", frequency(channel), channel);
    return 0;
}

/* The life of a companion: puts each file of `source` that the simulator has changed into `folder`. */
static int publish(const char *source, const char *folder)
{
    std::map<std::string, std::string> published;
    do {
        for (const auto &entry : std::filesystem::directory_iterator(root / source)) {
            const std::string name = entry.path().filename();
            const auto text = entry.path().extension() == UNFINISHED ? std::nullopt : read_file(entry.path());
            if (!text || (published.contains(name) && published[name] == *text))
                continue;
            write_file(root / folder / name, *text);
            published[name] = *text;
        }
    } while (wait_a_moment(std::chrono::milliseconds(20)));
    return 0;
}

static int run_network_status(const Arguments &)
{
    return publish(STATUS_SOURCE, STATUS_FOLDER);
}

static int run_pc_monitor(const Arguments &)
{
    return publish(SPEED_SOURCE, SPEED_FOLDER);
}

struct Program {
    std::string_view name;
    int (*run)(const Arguments &);
};

static constexpr Program programs[] = {
    {"5416regc", run_5416regc},
    {"echo", run_echo},
    {"iwlist", run_iwlist},
    {"network_status", run_network_status},
    {"pc_monitor", run_pc_monitor},
    {"ps", run_ps},
    {"rc", run_rc},
    {"reboot", run_reboot},
    {"sleep", run_sleep},
};

int main(int count, char **words)
try {
    const char *folder = std::getenv(ROOT_VARIABLE);
    const std::string name = count > 0 ? std::filesystem::path(words[0]).filename().string() : "";
    for (const Program &program : programs) {
        if (!folder || program.name != name)
            continue;
        root = folder;
        return program.run(Arguments(words + 1, words + count));
    }
    std::fprintf(stderr, "%s: a program of the simulated router, started without one\n", name.c_str());
    return 2;
} catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
