/* Years of the daemon's life in minutes, at random: keys, events, signals, settings and files, under the replay's
 * clock. soak [--passes N] [--seed S] [--wrap]; with --wrap the 32-bit tick count runs over on the way. */
#include "core/display.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "hardening/call_layer.h"
#include "platform/replay/quote_text.h"
#include "platform/replay/replay.h"
#include "replay/commands.h"
#include "replay/router_files.h"
#include "replay/script.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

using Line = std::vector<std::string>;

static constexpr unsigned SCRIPT_LINES = 400; // a failure's script begins at most twice as far back
static constexpr uint32_t BEFORE_WRAP = 3000; // ticks
static constexpr unsigned REDRAW_PASSES = 7;  // the longest that a redrawn picture stands
static constexpr unsigned PROGRESS_STEP = 61; // and one of the splash

static const std::string DISPLAY_LOCK = LCD_LOCK_FILE;

static const std::vector<std::string> keys = {"up", "down", "left", "right", "ok", "menu", "upstairs", "UP", ""};
static const std::vector<std::string> events = {"lost link",         "lost internet",   "restore internet",
                                                "save config start", "save config end", "setup wizard start",
                                                "setup wizard end",  "nothing known"};
static const std::vector<std::string> languages = {"en", "es", "fr", "de", "it", "du", "tc", "jp", "kr", "xx"};
/* Screens that few keys lead to. */
static const std::vector<std::string> far_screens = {"select_language",
                                                     "init setup",
                                                     "menu setup",
                                                     "failWPS",
                                                     "completeWPS",
                                                     "WPS wireless disabled",
                                                     "LCD power saving",
                                                     "WPS start",
                                                     "wps on-off",
                                                     "wps help",
                                                     "ga confirm",
                                                     "ga login info",
                                                     "ga help",
                                                     "security help",
                                                     "wireless switch",
                                                     "show wireless info",
                                                     "wireless radio feature",
                                                     "power save help",
                                                     "power save confirm",
                                                     "can not connect",
                                                     "Need more help",
                                                     "Wireless not found",
                                                     "no screen"};

struct Source {
    std::string name;
    std::vector<std::string> values;
};
static const std::vector<Source> settings = {
    {"wifi_dot11_mode", {"0", "7", ""}},
    {"wifi_ssid",
     {"Orvane", "A network whose name takes more room than the panel has", "\xff\xfe broken \xe4\xb8", ""}},
    {"wifi_security", {"disabled", "wep", "psk", "psk2", "psk2_mixed"}},
    {"wifi_channel", {"auto", "6", "13"}},
    {"wifi_bandwidth", {"0", "1", "3"}},
    {"wifi_def_key", {"1", "999999999999999999999999999999999999999999999999999999999999999"}},
    {"wifi_wsc_enable", {"0", "1", "-1", "99999999999999999999"}},
    {"wifi_if_on", {"0", "1", ""}},
    {"wifi_gacable", {"0", "1"}},
    {"wifi_gssid", {"Guests", "\xe8\xa8\xaa\xe5\xae\xa2"}},
    {"wifi_psk_guest_pwd", {"", "welcome2026", "short"}},
    {"time_zone", {"GMT+1:0:1", "GMT-7:0:2", "GMT+12:0:1", "G", ""}},
    {"time_daylight", {"0", "1"}},
    {"lan_ipaddr", {"192.168.1.1", ""}},
    {"wan_mode", {"dhcp", "static", "bpa", "pppoe"}},
    {"wan_ipaddr", {"10.0.0.2", "an address that is far too long to be one"}},
    {"wan_ifname", {"ppp0", "", "a name too long for an interface"}},
};
static const std::vector<Source> files = {
    {"/tmp/lcd/network_status/internet", {"internet on\n", "internet off\n", "internet blink\n", "internet"}},
    {"/tmp/lcd/network_status/wan", {"wan on\n", "wan off\n", ""}},
    {"/tmp/lcd/network_status/wireless", {"wireless on\n", "wireless blink\n"}},
    {"/tmp/lcd/network_status/lan", {"lan on\n", "lan off\n"}},
    {"/tmp/lcd/network_status/wireless_client", {"wireless_client 2\n", "wireless_client 99999999999999\n"}},
    {"/tmp/lcd/network_status/speed/down", {"0\n", "1572864\n", "999999999\n", "-5\n", "99999999999\n"}},
    {"/tmp/lcd/network_status/speed/up", {"52428\n", "x\n"}},
    {"/tmp/lcd/network_status/speed/pcs", {"", "12 1572864\n13 500000\n14 0\n", "12\n0 5\n300 7\n"}},
    {"/tmp/lcd/network_status/speed/total_pc_data", {"12 1610612736\n", "7 123456789012345678901234567890\n"}},
    {"/var/udhcpd.leases", {"", std::string(130, '\x0c'), std::string(19, '\0') + '\x0d' + std::string(44, 'N')}},
    {"/tmp/lcd/lcd_info", {"Upgrading Firmware\n", "Something else\n", std::string(300, 'W'), ""}},
    {"/tmp/wan_uptime", {""}},
    {"/var/wps_success", {""}},
    {"/var/wps_error", {""}},
    {"/proc/wsc_pbc", {""}},
    {"/var/is_default_for_lcd", {""}},
    {DISPLAY_LOCK, {""}}, // another writer of the display
};
static const std::vector<Source> outputs = {
    {"/bin/ps -e 2> /dev/null", {"1 network_status\n2 pc_monitor\n", ""}},
    {"/sbin/5416regc 0x4048 2> /dev/null", {"reg:4048 = 0x00bf0000\n", "reg:4048 = 0x0", ""}},
    {"/sbin/iwlist ath0 channel  2> /dev/null", {"Current Frequency:2.4 GHz (Channel 11)\n", "Current"}},
};

static std::mt19937_64 dice;
static std::vector<Line> script;        // what has been played since the world was written down
static std::vector<Line> former_script; // and what before
static std::set<std::string> visited;
static bool other_writer; // holds the display's lock

static size_t roll(size_t sides)
{
    return dice() % sides;
}

static const std::string &any_of(const std::vector<std::string> &texts)
{
    return texts[roll(texts.size())];
}

/* The lines that bring a fresh daemon where this one is, but for what it remembers. */
static std::vector<Line> describe_world(const fs::path &root)
{
    std::vector<Line> lines = {{"time", std::to_string(replay.clock)}};
    for (const auto &[key, value] : replay.settings)
        lines.push_back({"nvram", key, value});
    for (const auto &[command, text] : replay.outputs)
        lines.push_back({"output", command, text});
    for (const char *folder : {"tmp", "var", "proc"})
        for (const auto &entry : fs::recursive_directory_iterator(root / folder))
            if (entry.is_regular_file()) {
                std::ifstream file(entry.path(), std::ios::binary);
                const std::string text{std::istreambuf_iterator<char>(file), {}};
                lines.push_back({"file", '/' + fs::relative(entry.path(), root).string(), text});
            }
    lines.push_back({"start"});
    lines.push_back({"pass", "640"});
    lines.push_back({"goto", current_screen->name});
    return lines;
}

static void print_script(const std::vector<Line> &lines)
{
    for (const Line &line : lines) {
        printf("%s", line[0].c_str());
        for (size_t i = 1; i < line.size(); i++)
            printf(" %s", quote_text(line[i]).c_str());
        printf("\n");
    }
}

/* Adds a line to the script; a pass joins those before it. */
static void note(const Line &line)
{
    if (line[0] == "pass" && script.back()[0] == "pass")
        script.back()[1] = std::to_string(std::stoul(script.back()[1]) + 1);
    else
        script.push_back(line);
}

static void play(const Line &line)
{
    note(line);
    if (line.size() > 1 && line[1] == DISPLAY_LOCK)
        other_writer = line[0] == "file";
    const Outcome outcome = play_command(line);
    if (outcome.result != PLAY_DONE)
        throw std::runtime_error(line[0] + ": " + outcome.text);
}

static Line random_file()
{
    const Source &file = files[roll(files.size())];
    if (roll(3) == 0 || file.name == DISPLAY_LOCK)
        return {"rm", file.name};
    std::string text = any_of(file.values);
    if (roll(4) == 0)
        text.resize(roll(text.size() + 1));
    return {"file", file.name, text};
}

static Line random_input()
{
    switch (roll(16)) {
    default:
        return {"key", any_of(keys)};
    case 0:
    case 1:
        return {"event", any_of(events)};
    case 2: {
        const Source &setting = settings[roll(settings.size())];
        return {"nvram", setting.name, any_of(setting.values)};
    }
    case 3:
    case 4:
        return random_file();
    case 5: {
        const Source &output = outputs[roll(outputs.size())];
        return {"output", output.name, any_of(output.values)};
    }
    case 6:
        return {"signal", roll(2) == 0 ? "input" : "language"};
    case 7:
        return roll(8) == 0 ? Line{"nvram", "language_lcd", any_of(languages)} : Line{"key", "ok"};
    case 8:
        return roll(8) == 0 ? Line{"goto", any_of(far_screens)} : Line{"key", "down"};
    case 9:
        return {"time", std::to_string(1700000000 + roll(100000000))};
    case 11:
        /* The page that no key leaves. */
        return roll(50) == 0 ? Line{"event", "info"} : Line{"key", "right"};
    case 10:
        /* Another writer of the display holds its lock for a moment. */
        return roll(20) == 0 ? Line{"file", DISPLAY_LOCK, ""} : Line{"key", "menu"};
    }
}

/* What must hold behind every pass. */
class Invariants
{
public:
    explicit Invariants(bool wrapping) : wrapping_(wrapping) {}

    /* `ticked`: the screen had a tick, for want of a key. */
    void check(bool ticked)
    {
        if (layer.allocations != 0 || layer.asset_files != 0)
            throw std::runtime_error("the daemon holds memory or a file between two passes");
        check_pictures(ticked);
    }

    void check_descriptors() const
    {
        if (lowest_free_ != lowest_descriptor())
            throw std::runtime_error("a descriptor is left open");
    }

private:
    void check_pictures(bool ticked)
    {
        const bool entered = current_screen != screen_;
        const bool drawn = replay.frame_count != pictures_;
        if (entered)
            visited.insert(current_screen->name);
        /* A timer that was armed before the wrap ends as it may; a screen entered after it arms its own anew. */
        if (wrapping_ && entered && tick_count > REDRAW_PASSES && tick_count < BEFORE_WRAP)
            wrapping_ = false;
        screen_ = current_screen;
        pictures_ = replay.frame_count;
        passes_ = entered || drawn || wrapping_ || other_writer ? 0 : passes_ + ticked;
        if (passes_ <= REDRAW_PASSES)
            return;
        const std::string_view name = screen_->name;
        if (name == "select_language" || name == "LCD power saving")
            passes_ = 0;
        else if (name != "welcome" || passes_ > PROGRESS_STEP)
            throw std::runtime_error("no picture for too long on " + std::string(name) + " at tick " +
                                     std::to_string(tick_count));
    }

    const int lowest_free_ = lowest_descriptor();
    bool wrapping_;
    const ScreenEntry *screen_ = nullptr;
    unsigned pictures_ = 0, passes_ = 0;
};

static long resident_kilobytes()
{
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

struct Options {
    uint64_t passes = 10000000, seed = std::random_device()();
    bool wrap = false;
};

static void begin_script(const fs::path &root)
{
    former_script = std::move(script);
    script = describe_world(root);
}

/* A stretch of passes without input: mostly short, now and then until every screen has fallen back. */
static uint64_t quiet_stretch()
{
    if (roll(100) == 0)
        return roll(3000);
    return 1 + roll(roll(8) == 0 ? 200 : 12);
}

static void soak(const Options &options, const fs::path &root)
{
    play({"start"});
    if (options.wrap)
        tick_count = UINT32_MAX - BEFORE_WRAP;
    begin_script(root);
    static const Line one_pass = {"pass", "1"};
    Invariants invariants(options.wrap);
    long early = 0;
    for (uint64_t pass = 0; pass < options.passes;) {
        play(random_input());
        const uint64_t stretch = quiet_stretch();
        for (uint64_t quiet = 0; quiet < stretch && pass < options.passes; quiet++, pass++) {
            play(one_pass);
            invariants.check(quiet > 0);
        }
        invariants.check_descriptors();
        if (script.size() > SCRIPT_LINES)
            begin_script(root);
        if (early == 0 && pass > options.passes / 10)
            early = resident_kilobytes();
    }
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    fprintf(stderr,
            "%" PRIu64
            " passes, %u pictures, %zu screens; resident after a tenth %ld kB, at the end %ld kB, at most %ld kB; "
            "%ld s of processor time\n",
            options.passes, replay.frame_count, visited.size(), early, resident_kilobytes(), usage.ru_maxrss,
            usage.ru_utime.tv_sec + usage.ru_stime.tv_sec);
    if (options.passes >= 1000000 && visited.size() != SCREEN_COUNT)
        throw std::runtime_error("some screens were never seen");
}

static bool read_options(int argc, char **argv, Options &options)
{
    for (int i = 1; i < argc; i++) {
        const std::string_view name = argv[i];
        if (name == "--wrap") {
            options.wrap = true;
            continue;
        }
        const auto number = i + 1 < argc ? parse_number(argv[++i], UINT64_MAX) : std::nullopt;
        if (!number || (name != "--passes" && name != "--seed"))
            return false;
        (name == "--seed" ? options.seed : options.passes) = *number;
    }
    return true;
}

int main(int argc, char **argv)
{
    Options options;
    if (!read_options(argc, argv, options)) {
        fputs("usage: soak [--passes N] [--seed S] [--wrap]\n", stderr);
        return 2;
    }
    fprintf(stderr, "seed %" PRIu64 "\n", options.seed);
    dice.seed(options.seed);
    const fs::path root = make_root_folder();
    for (const char *folder : {"tmp/lcd/network_status/speed", "var", "proc", "sbin"})
        fs::create_directories(root / folder);
    fs::create_directory_symlink(BUILT_ROOT "/sbin/lcd_ml", root / "sbin/lcd_ml");
    open_router_root(root);
    replay.trace = false;
    const int terminal = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    if (!freopen("/dev/null", "w", stdout))
        return 2;
    int result = 0;
    try {
        soak(options, root);
    } catch (const std::exception &failure) {
        fprintf(stderr, "%s; the last inputs:\n", failure.what());
        fflush(stdout);
        dup2(terminal, STDOUT_FILENO);
        former_script.insert(former_script.end(), script.begin(), script.end());
        print_script(former_script);
        result = 1;
    }
    fs::remove_all(root);
    return result;
}
