/* panel-sim: the simulated router with its panel on a web page and in a terminal. */
#include "sim/panel_server.h"
#include "sim/places.h"
#include "sim/router.h"
#include "sim/spawn.h"
#include "sim/terminal.h"
#include "sim/terminal_kind.h"
#include "sim/world.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <getopt.h>
#include <optional>
#include <span>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/signalfd.h>

namespace fs = std::filesystem;
using namespace sim;

static constexpr const char USAGE[] =
    "Usage: panel-sim [OPTION]...\n"
    "Runs the front panel on a simulated router and serves it as a web page on this machine alone.\n"
    "\n"
    "  --root DIR      the router's root folder, kept with its settings (else a temporary one)\n"
    "  --assets DIR    folder with sbin/lcd_ml (else ../root beside this program's folder)\n"
    "  --daemon PATH   the display daemon (else frontpaneld-desk beside this program)\n"
    "  --port N        port of the page, or the next free one (8064); 0: any\n"
    "  --world NAME    what the router begins with: a ready world (healthy-home, ...) or a file\n"
    "  --speed N       how fast its clock runs: 1, 10, 100 times real time, or pause (1)\n"
    "  --no-browser    do not open the page\n"
    "  --terminal      the panel in this terminal, beside the page\n"
    "  --log FILE      what the router prints, with --terminal (else its last lines alone are shown)\n"
    "  --no-web        without the page, with --terminal\n"
    "  --help          this text\n";

struct Options {
    fs::path root;
    RootSources sources;
    int port = 8064;
    std::vector<WorldLine> world;
    std::string speed; // "": the world's
    bool browser = true;
    bool terminal = false;
    fs::path log; // "": none
    bool web = true;
    bool help = false;
};

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

static int port_number(std::string_view text)
{
    int port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port < 0 || port > UINT16_MAX)
        throw UsageError("--port takes a number from 0 to 65535, not \"" + std::string(text) + "\"");
    return port;
}

static std::string clock_speed(const std::string &text)
{
    const std::string fault = fault_of(*find_input(SPEED_INPUT), text);
    if (!fault.empty())
        throw UsageError("--speed " + fault + ", not \"" + text + "\"");
    return text;
}

static std::vector<WorldLine> world(const std::string &name)
try {
    return read_world(name);
} catch (const std::runtime_error &error) {
    throw UsageError(error.what());
}

static void take_option(Options &options, const std::string &name, const char *value)
{
    if (name == "root")
        options.root = value;
    else if (name == "assets")
        options.sources.assets = value;
    else if (name == "daemon")
        options.sources.daemon = value;
    else if (name == "port")
        options.port = port_number(value);
    else if (name == "speed")
        options.speed = clock_speed(value);
    else if (name == "world")
        options.world = world(value);
    else if (name == "no-browser")
        options.browser = false;
    else if (name == "terminal")
        options.terminal = true;
    else if (name == "log")
        options.log = value;
    else if (name == "no-web")
        options.web = false;
    else
        options.help = true;
}

static Options parse_options(int count, char **words)
{
    static const option known[] = {
        {"root", required_argument, nullptr, 0},    {"assets", required_argument, nullptr, 0},
        {"daemon", required_argument, nullptr, 0},  {"port", required_argument, nullptr, 0},
        {"speed", required_argument, nullptr, 0},   {"world", required_argument, nullptr, 0},
        {"no-browser", no_argument, nullptr, 0},    {"terminal", no_argument, nullptr, 0},
        {"log", required_argument, nullptr, 0},     {"no-web", no_argument, nullptr, 0},
        {"help", no_argument, nullptr, 0},          {},
    };
    const fs::path programs = fs::canonical("/proc/self/exe").parent_path();
    Options options;
    options.sources = {.assets = programs.parent_path() / "root",
                       .daemon = programs / "frontpaneld-desk",
                       .programs = programs / "panel-router-programs"};
    int index = 0;
    for (int found; (found = getopt_long(count, words, "", known, &index)) != -1;) {
        if (found != 0)
            throw UsageError("try --help");
        take_option(options, known[index].name, optarg);
    }
    if (optind < count)
        throw UsageError(std::string("no such option: ") + words[optind]);
    return options;
}

static void check_sources(const RootSources &sources)
{
    if (!fs::is_directory(sources.assets / "sbin/lcd_ml"))
        throw UsageError(sources.assets.string() + ": no folder sbin/lcd_ml with the panel's assets");
    for (const fs::path &program : {sources.daemon, sources.programs})
        if (!fs::is_regular_file(program) || access(program.c_str(), X_OK) < 0)
            throw UsageError(program.string() + ": no program that can be run");
}

/* The signals that the router's loop waits for. */
static constexpr int ROUTER_SIGNALS[] = {SIGINT, SIGTERM, SIGHUP, SIGCHLD};

/* Keeps signals from every thread that is started later; where they can be read. */
static Fd block_signals(std::span<const int> list)
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : list)
        sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return Fd(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

/* Connections that a page leaves open must not keep the router's files from being written. */
static void raise_file_limit()
{
    static constexpr rlim_t WANTED = 8192;
    rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < WANTED) {
        limit.rlim_cur = std::min(WANTED, limit.rlim_max);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

static void open_page(const std::string &address)
{
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        return;
    for (const char *opener : {"/usr/bin/xdg-open", "/usr/local/bin/xdg-open"})
        if (access(opener, X_OK) == 0) {
            spawn({.arguments = {opener, address}, .environment = environment_with({}), .own = false});
            return;
        }
}

static void check_terminal_options(const Options &options)
{
    if (!options.terminal && (!options.log.empty() || !options.web))
        throw UsageError("--log and --no-web go with --terminal");
    if (options.terminal)
        check_terminal();
}

/* Runs `router` with its panels until a signal ends it. */
static void show(Router &router, const Options &options, const Fd &signals)
{
    Fd terminal_signals = options.terminal ? block_signals(TERMINAL_SIGNALS) : Fd();
    std::optional<PanelServer> server;
    if (options.web)
        server.emplace(router, options.port);
    const std::string page = server ? server->address() + "/" : "";
    std::optional<Terminal> terminal;
    if (options.terminal)
        terminal.emplace(router, page, options.log, std::move(terminal_signals));
    else
        std::printf("The panel is at %s (Ctrl-C ends it). The router's root is %s\n", page.c_str(),
                    router.root().c_str());
    if (options.browser && !options.terminal)
        open_page(page);
    router.run(signals);
}

int main(int count, char **words)
try {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const Options options = parse_options(count, words);
    if (options.help) {
        std::fputs(USAGE, stdout);
        return 0;
    }
    check_terminal_options(options);
    check_sources(options.sources);
    raise_file_limit();
    const Fd signals = block_signals(ROUTER_SIGNALS);
    Router router(options.root, options.sources);
    enter_world(router, options.world);
    if (!options.speed.empty())
        set_input(router, *find_input(SPEED_INPUT), options.speed);
    router.feed().set_state(read_state(router)); // the first page finds the whole world
    show(router, options, signals);
    return 0;
} catch (const UsageError &error) {
    std::fprintf(stderr, "panel-sim: %s\n", error.what());
    return 2;
} catch (const std::exception &error) {
    std::fprintf(stderr, "panel-sim: %s\n", error.what());
    return 1;
}
