/* What is kept of a run: the time line, the pictures as files, and the script that plays it again. */
#include "tests/sim/simulator.h"

#include <algorithm>
#include <gif_lib.h>
#include <png.h>
#include <regex>
#include <span>
#include <sstream>

/* What happened. */
struct Told {
    std::string kind, text, picture;
};

static std::vector<Told> time_line(Simulator &simulator)
{
    static const std::regex member(R"!("kind":"(\w+)","text":"(.*?)","picture":(\d+))!");
    const std::string json = simulator.get("/happenings").body;
    std::vector<Told> told;
    for (std::sregex_iterator each(json.begin(), json.end(), member), end; each != end; ++each)
        told.push_back({each->str(1), each->str(2), each->str(3)});
    return told;
}

static std::string hexadecimal(const std::string &bytes)
{
    std::string text;
    for (const unsigned char byte : bytes)
        text += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
    return text;
}

/* The trace that panel-replay makes of `script` on a root of its own. */
static std::string played(const std::string &script)
{
    namespace fs = std::filesystem;
    const TempFolder folder;
    const fs::path root = folder / "root", assets = "sbin/lcd_ml", file = folder.write("run.scenario", script);
    fs::create_directories(root / assets);
    fs::create_symlink(BUILT_ROOT / assets / "_auto_bitmap_", root / assets / "_auto_bitmap_");
    fs::copy(BUILT_ROOT / assets / "_auto_lang_", root / assets / "_auto_lang_");
    const std::string trace = output_of(PANEL_REPLAY " --root " + root.string() + " " + file.string() + " 2>&1");
    EXPECT_EQ(trace.find(file.string()), std::string::npos) << trace; // a complaint
    return trace;
}

/* The script of a run plays to the pictures that the LCD showed in `told`; how many they are. */
static size_t expect_same_pictures(Simulator &simulator, std::span<const Told> told)
{
    std::vector<std::string> shown, again;
    for (const Told &each : told)
        if (each.kind == "frame")
            shown.push_back(hexadecimal(simulator.get("/picture/" + each.picture).body));
    const std::string script = simulator.get("/script").body;
    std::istringstream words(played(script));
    for (std::string word, before; words >> word; before = word)
        if (before == "frame")
            again.push_back(word);
    for (auto *pictures : {&shown, &again})
        pictures->erase(std::unique(pictures->begin(), pictures->end()), pictures->end()); // light alone
    const auto [one, other] = std::ranges::mismatch(shown, again);
    EXPECT_TRUE(shown == again) << "behind picture " << one - shown.begin() << " of " << shown.size() << " shown and "
                                << again.size() << " played\n"
                                << script;
    return shown.size();
}

/* "ID VALUE" of an input, "+N": waits for another picture for so many ticks. */
static void walk(Simulator &simulator, std::initializer_list<const char *> steps)
{
    for (const std::string step : steps) {
        const size_t end = std::min(step.find(' '), step.size());
        const std::string value = end < step.size() ? step.substr(end + 1) : "";
        EXPECT_LT(step[0] == '+' ? simulator.post("/until-change?ticks=" + step.substr(1))
                                 : simulator.set(step.substr(0, end), value),
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
    "fault.lock no", "+9", "event.save-config-start", "fault.driver gone", "key.menu", "key.up", "fault.driver there",
    "+99", "router.kill-network-status", "link.internet off", "clock.jump", "key.ok", "event.setup-wizard-start",
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
    EXPECT_GT(expect_same_pictures(simulator, time_line(simulator)), 40u);
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
    expect_same_pictures(simulator, {std::ranges::find_if(told, begins_again), told.end()});
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

/* The splash moves on by a step 61 ticks after it came, however long the machine's clock runs. */
TEST(UntilChange, EndsWithThePictureOrItsTicks)
{
    Simulator simulator("pause");
    ASSERT_TRUE(eventually([&] { return simulator.frame() != std::string(1024, '\xff'); }));
    const std::string still = simulator.client->Post("/until-change?ticks=60")->body;
    EXPECT_TRUE(still.starts_with("{\"tick\":60,\"changed\":false,")) << still;
    const std::string changed = simulator.client->Post("/until-change?ticks=1000")->body;
    EXPECT_TRUE(changed.starts_with("{\"tick\":61,\"changed\":true,")) << changed;
    EXPECT_NE(changed.find(hexadecimal(simulator.frame())), std::string::npos);
    walk(simulator, {"clock.step", "clock.jump"});
    EXPECT_EQ(simulator.ticks(), 1262u);
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

/* Whether pixel `i` is drawn in a frame of the driver's, which takes 0 for one. */
static bool is_black(const std::string &frame, size_t i)
{
    return !(frame[i / 8] & 0x80 >> i % 8);
}

static void expect_png(const std::string &file, unsigned scale, const std::string &frame)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_memory(&image, file.data(), file.size());
    image.format = PNG_FORMAT_GRAY;
    ASSERT_EQ(std::pair(image.width, image.height), std::pair(128 * scale, 64 * scale));
    std::vector<uint8_t> gray(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, gray.data(), 0, nullptr);
    for (size_t i = 0; i < frame.size() * 8; ++i)
        ASSERT_EQ(gray[(i / 128 * scale * 128 + i % 128) * scale], is_black(frame, i) ? 0 : 255) << i;
}

TEST(Pictures, AreFiles)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.jump", "key.menu"});
    expect_png(simulator.get("/screenshot.png?look=plain&scale=16").body, 16, simulator.frame());
    expect_png(simulator.get("/picture/1.png?look=plain&scale=1").body, 1, simulator.get("/picture/1").body);
    const std::string lit = simulator.get("/screenshot.png").body;
    simulator.run("sbin/5416regc 0x4048=0xfff8000");
    EXPECT_TRUE(eventually([&] { return simulator.get("/screenshot.png").body != lit; }));
}

TEST(Pictures, MakeAnAnimation)
{
    Simulator simulator("pause");
    walk(simulator, {"clock.step", "clock.jump", "key.menu", "clock.step", "key.down", "clock.step"});
    const TempFolder folder;
    const std::string path =
        folder.write("recording.gif", simulator.get("/recording.gif?look=plain&scale=1&from=600").body);
    GifFileType *gif = DGifOpenFileName(path.c_str(), nullptr);
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
        ASSERT_EQ(gif->SavedImages[gif->ImageCount - 1].RasterBits[i], is_black(frame, i)) << i;
    DGifCloseFile(gif, nullptr);
}
