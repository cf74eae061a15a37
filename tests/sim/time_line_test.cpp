/* What is kept of a run: the time line, the pictures as files, and the script that plays it again. */
#include "tests/sim/simulator.h"

#include <algorithm>
#include <gif_lib.h>
#include <png.h>
#include <sstream>

/* One happening in JSON: its kind, text and picture. */
struct Told {
    std::string kind, text, picture;
};

/* What stands in `json` between `begin` and `end`, from `at` on, which moves behind it. */
static std::string between(const std::string &json, size_t &at, std::string_view begin, std::string_view end)
{
    const size_t first = json.find(begin, at) + begin.size();
    at = json.find(end, first);
    return json.substr(first, at - first);
}

static std::vector<Told> time_line(Simulator &simulator)
{
    const std::string json = simulator.get("/happenings").body;
    std::vector<Told> told;
    for (size_t at = 0; json.find("\"kind\":", at) != std::string::npos;) {
        const std::string kind = between(json, at, "\"kind\":\"", "\"");
        const std::string text = between(json, at, "\"text\":\"", "\",\"picture\":");
        told.push_back({kind, text, between(json, at, "\"picture\":", "}")});
    }
    return told;
}

static std::string hexadecimal(const std::string &bytes)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes)
        text += {DIGITS[byte >> 4], DIGITS[byte & 15]};
    return text;
}

/* The pictures of a run, one after the other, from the happening `first` on. */
static std::vector<std::string> shown(Simulator &simulator, size_t first)
{
    std::vector<std::string> pictures;
    const std::vector<Told> told = time_line(simulator);
    for (size_t i = first; i < told.size(); ++i)
        if (told[i].kind == "frame")
            pictures.push_back(hexadecimal(simulator.get("/picture/" + told[i].picture).body));
    pictures.erase(std::unique(pictures.begin(), pictures.end()), pictures.end()); // light alone
    return pictures;
}

/* The pictures that panel-replay makes of `script` on a root of its own. */
static std::vector<std::string> played(const std::string &script)
{
    namespace fs = std::filesystem;
    const TestFolder folder;
    const fs::path root = folder.path() / "root", assets = "sbin/lcd_ml", file = folder.path() / "run.scenario";
    fs::create_directories(root / assets);
    fs::create_symlink(BUILT_ROOT / assets / "_auto_bitmap_", root / assets / "_auto_bitmap_");
    fs::copy(BUILT_ROOT / assets / "_auto_lang_", root / assets / "_auto_lang_");
    std::ofstream(file) << script;
    const std::string trace = output_of(PANEL_REPLAY " --root " + root.string() + " " + file.string() + " 2>&1");
    std::vector<std::string> pictures;
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_FALSE(line.starts_with(file.string())) << line; // a complaint
        const size_t frame = line.find(" frame ");
        if (line.starts_with('@') && frame != std::string::npos)
            pictures.push_back(line.substr(frame + sizeof " frame " - 1));
    }
    pictures.erase(std::unique(pictures.begin(), pictures.end()), pictures.end());
    return pictures;
}

/* Where two runs part, to be found in the script; "" where they do not. */
static std::string difference(const std::vector<std::string> &played, const std::vector<std::string> &shown)
{
    const auto [one, other] = std::ranges::mismatch(played, shown);
    if (one == played.end() && other == shown.end())
        return "";
    return "behind picture " + std::to_string(one - played.begin()) + " of " + std::to_string(played.size()) +
           " played and " + std::to_string(shown.size()) + " shown";
}

/* "ID VALUE" of an input, "+N": waits for another picture for so many ticks. */
static void walk(Simulator &simulator, std::initializer_list<const char *> steps)
{
    for (const std::string step : steps) {
        const size_t blank = step.find(' ');
        const std::string value = blank == std::string::npos ? "" : step.substr(blank + 1);
        EXPECT_LT(simulator.post(step[0] == '+' ? "/until-change?ticks=" + step.substr(1)
                                                : "/input/" + step.substr(0, blank),
                                 value),
                  300)
            << step;
    }
}

static constexpr std::initializer_list<const char *> busy_walk = {
    /* Traffic, links and the clock under the status screens. */
    "computers.come-and-go on", "key.right", "+20", "+20", "key.right", "+20", "traffic.pattern glitch", "+200",
    "link.wan blink", "key.right", "+30", "clock.time 2024-03-10T01:59:50", "key.up", "+30", "+700", "link.clients 77",
    /* Settings from both sides, languages, a pack that is cut. */
    "key.menu", "key.down", "key.ok", "key.ok", "key.ok", "+20", "wifi.name A name that scrolls over the panel", "+9",
    "panel.language de", "fault.pack cut", "panel.language fr", "panel.language de", "+9", "fault.pack whole",
    "panel.language en", "panel.language jp", "key.menu", "+9", "setting.wifi_ssid caf\\xc3\\xa9 \\\"1\\\"\\n\\xff",
    /* Events, the display lock, a driver that is gone, a companion that comes back. */
    "event.lost-link", "+9", "event.restore-internet", "fault.lock left-behind", "key.menu", "key.down",
    "fault.lock no", "+9", "event.save-config-start", "fault.driver gone", "key.menu", "key.up", "fault.driver there", "+99",
    "router.kill-network-status", "link.internet off", "clock.jump", "key.ok", "event.setup-wizard-start",
    "event.setup-wizard-end", "+9", "info.text Busy", "event.info", "+9", "key.ok",
    /* A pairing to its end, guest access, power saving. */
    "wps.outcome overlap", "wps.seconds 3", "key.menu", "key.ok", "key.ok", "key.ok", "+60", "+60", "+60", "key.ok",
    "key.menu", "key.down", "key.down", "key.down", "key.ok", "key.ok", "+9", "key.menu", "key.down", "key.down",
    "key.down", "key.down", "key.ok", "key.ok", "key.ok", "+9", "key.left", "+9"};

TEST(Script, PlaysToTheSamePictures)
{
    Simulator simulator("pause", "busy-evening");
    walk(simulator, {"clock.jump"}); // over the splash
    walk(simulator, busy_walk);
    const std::string script = simulator.get("/script").body;
    const std::vector<std::string> expected = shown(simulator, 0);
    EXPECT_GT(expected.size(), 40u);
    EXPECT_EQ(difference(played(script), expected), "") << script;
    for (const char *line : {"key menu\n", "event \"lost link\"\n", "signal language\n", "interface wan0 "})
        EXPECT_NE(script.find(line), std::string::npos) << line << script;
}

/* In real time too, and from a daemon's start amid a life of the router. */
TEST(Script, BeginsAnewWithTheDaemon)
{
    Simulator simulator("100");
    walk(simulator, {"clock.jump", "fault.pack cut", "panel.factory on", "router.kill-daemon"});
    const auto begins_again = [&](const Told &told) { return told.text == "the daemon starts again"; };
    ASSERT_TRUE(eventually([&] { return std::ranges::any_of(time_line(simulator), begins_again); }));
    walk(simulator, {"clock.jump", "key.down", "link.wan off", "key.ok", "clock.speed 10", "key.ok", "key.ok"});
    walk(simulator, {"clock.speed pause", "clock.step"}); // the tick that was under way has passed
    const std::vector<Told> told = time_line(simulator);
    const auto begin = std::ranges::find_if(told, begins_again) - told.begin();
    const std::string script = simulator.get("/script").body;
    EXPECT_EQ(difference(played(script), shown(simulator, static_cast<size_t>(begin))), "") << script;
}

/* The order of a single pass: what the daemon sets, runs and shows, after what was done to it. */
TEST(TimeLine, TellsWhatTheDaemonDoesInItsOrder)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.jump", "key.menu", "key.down", "key.ok", "key.ok", "key.ok"});
    const std::vector<Told> told = time_line(simulator);
    std::vector<std::string> lines;
    for (const Told &each : told) {
        if (each.kind == "input")
            lines.clear();
        if (each.kind != "frame" && each.kind != "router") // which the command runs in the background
            lines.push_back(each.kind + " " + each.text);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"input key.ok", "setting wifi_dot11_mode 0", "setting commit",
                                               "command rc wireless restart&"}));
}

TEST(UntilChange, EndsWithThePictureOrItsTicks)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.jump", "key.menu"});
    const std::string still = simulator.posted("/until-change?ticks=30").body;
    EXPECT_TRUE(still.starts_with("{\"tick\":1231,\"changed\":false,")) << still;
    simulator.set("link.wan", "off");
    walk(simulator, {"event.save-config-start"});
    const std::string changed = simulator.posted("/until-change?ticks=1000").body;
    EXPECT_TRUE(changed.starts_with("{\"tick\":1333,\"changed\":true,")) << changed; // the page closes by itself
    EXPECT_NE(changed.find(hexadecimal(simulator.frame())), std::string::npos);
}

TEST(Upgrade, EndsInAReboot)
{
    Simulator simulator("pause");
    walk(simulator, {"event.firmware-upgrade", "clock.step"});
    EXPECT_EQ(simulator.file("tmp/lcd/lcd_info"), "Upgrading Firmware\n");
    walk(simulator, {"clock.jump", "+2"});
    EXPECT_TRUE(eventually([&] { return simulator.file("tmp/lcd/lcd_info").empty(); }));
    EXPECT_NE(simulator.printed().find("firmware: Restarting Router"), std::string::npos);
}

/* Black pixels of a plain PNG, as the driver's frame. */
static std::string frame_of_png(const std::string &file, unsigned scale)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_memory(&image, file.data(), file.size());
    image.format = PNG_FORMAT_GRAY;
    EXPECT_EQ(image.width, 128 * scale);
    EXPECT_EQ(image.height, 64 * scale);
    std::vector<uint8_t> gray(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, gray.data(), 0, nullptr);
    std::string frame(1024, '\0');
    for (size_t i = 0; i < frame.size() * 8; ++i)
        if (gray[(i / 128 * scale * 128 + i % 128) * scale] == 255)
            frame[i / 8] |= static_cast<char>(0x80 >> i % 8);
    return frame;
}

TEST(Pictures, AreFiles)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.jump", "key.menu"});
    for (const unsigned scale : {1u, 16u})
        EXPECT_EQ(frame_of_png(simulator.get("/screenshot.png?look=plain&scale=" + std::to_string(scale)).body, scale),
                  simulator.frame());
    const std::string first = simulator.get("/picture/1.png?look=plain&scale=2").body;
    EXPECT_EQ(frame_of_png(first, 2), simulator.get("/picture/1").body);
    const std::string lit = simulator.get("/screenshot.png").body;
    simulator.run("sbin/5416regc 0x4048=0xfff8000");
    EXPECT_TRUE(eventually([&] { return simulator.get("/screenshot.png").body != lit; }));
}

TEST(Pictures, MakeAnAnimation)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.step", "clock.jump", "key.menu", "clock.step", "key.down", "clock.step"});
    std::string file = simulator.get("/recording.gif?look=plain&scale=1&from=600").body;
    const auto read = [](GifFileType *gif, GifByteType *bytes, int size) {
        std::string &rest = *static_cast<std::string *>(gif->UserData);
        const size_t count = rest.copy(reinterpret_cast<char *>(bytes), static_cast<size_t>(size));
        rest.erase(0, count);
        return static_cast<int>(count);
    };
    GifFileType *gif = DGifOpen(&file, read, nullptr);
    ASSERT_TRUE(gif);
    ASSERT_EQ(DGifSlurp(gif), GIF_OK);
    std::vector<int> hundredths;
    for (int i = 0; i < gif->ImageCount; ++i) {
        GraphicsControlBlock control;
        ASSERT_EQ(DGifSavedExtensionToGCB(gif, i, &control), GIF_OK);
        hundredths.push_back(control.DelayTime);
    }
    /* The last of the splash, its end, the screen that stood for long, the two of the keys. */
    EXPECT_EQ(hundredths, (std::vector<int>{100, 200, 200, 20, 10}));
    const std::string frame = simulator.frame();
    for (size_t i = 0; i < frame.size() * 8; ++i)
        ASSERT_EQ(gif->SavedImages[gif->ImageCount - 1].RasterBits[i], !(frame[i / 8] & 0x80 >> i % 8)) << i;
    DGifCloseFile(gif, nullptr);
}
