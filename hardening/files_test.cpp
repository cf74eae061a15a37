/* Files that their writers have half written, or swap under the reader: the picture is always that of a state which the
 * file was in. */
#include "core/actions.h"
#include "core/input.h"
#include "core/main_loop.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "hardening/call_layer.h"
#include "lang/language.h"
#include "lang/text_id.h"
#include "platform/replay/replay.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;
namespace fs = std::filesystem;

static constexpr const char *ASSETS = "/sbin/lcd_ml";
static const fs::path BUILT = BUILT_ROOT "/sbin/lcd_ml";

struct ShownFile {
    const char *path, *screen;
    std::string former, latter;
};

static std::string lease(char host, const std::string &name)
{
    return std::string(19, '\0') + host + std::string(4, '\0') + name + std::string(40 - name.size(), '\0');
}

static const ShownFile shown_files[] = {
    {"/tmp/lcd/network_status/internet", "network status", "internet on\n", "internet off\n"},
    {"/tmp/lcd/network_status/lan", "network status", "lan off\n", "lan on\n"},
    {"/tmp/lcd/network_status/wireless_client", "network status", "wireless_client 1\n", "wireless_client 12\n"},
    {"/tmp/lcd/network_status/speed/down", "upload-download speedometer", "1572864\n", "52428800\n"},
    {"/tmp/lcd/network_status/speed/up", "upload-download speedometer", "500\n", "1048576\n"},
    {"/tmp/lcd/network_status/speed/pcs", "computer speed", "12 1572864\n13 500000\n", "14 7340032\n"},
    {"/tmp/lcd/network_status/speed/total_pc_data", "computer usage", "12 1610612736\n", "13 15000000\n12 4096\n"},
    {"/var/udhcpd.leases", "computer speed", lease(12, "Notebook"),
     lease(14, "Camera") + lease(15, "Television") + lease(12, "Printer")},
    {"/tmp/lcd/lcd_info", "router event", "Upgrading Firmware\n", "Restarting Router\n"},
};

static void put(const fs::path &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

using Change = std::function<void(const fs::path &path, const ShownFile &file)>;

/* What a writer does in turn, each a state of its own; then it begins again. */
static const Change changes[] = {
    [](const fs::path &path, const ShownFile &) { fs::resize_file(path, 0); },
    [](const fs::path &path, const ShownFile &file) {
        std::ofstream(path, std::ios::app) << file.latter.substr(0, file.latter.size() / 2);
    },
    [](const fs::path &path, const ShownFile &file) {
        std::ofstream(path, std::ios::app) << file.latter.substr(file.latter.size() / 2);
    },
    [](const fs::path &path, const ShownFile &file) {
        const fs::path whole = path.string() + ".new";
        put(whole, file.former);
        fs::rename(whole, path);
    },
};

static std::vector<std::string> states_of(const ShownFile &file)
{
    return {file.former, "", file.latter.substr(0, file.latter.size() / 2), file.latter};
}

/* What one read may give of a file that is cut and written anew meanwhile: the kernel looks at its length and copies
 * bytes in turn, so that those of one state are followed by those of another. */
static std::set<std::string> torn_states_of(const ShownFile &file)
{
    const std::vector<std::string> states = states_of(file);
    std::set<std::string> torn;
    for (const std::string &start : states)
        for (const std::string &length : states)
            for (const std::string &rest : states) {
                const std::string first = start.substr(0, length.size());
                torn.insert(first + rest.substr(std::min(first.size(), rest.size())));
            }
    return torn;
}

/* A running daemon before each test, its screens fed. */
class Files : public testing::Test
{
protected:
    Files() : folder(make_root_folder())
    {
        layer = {};
        replay = {};
        replay.trace = false;
        replay_open_root(folder);
        fs::create_directories(root("/sbin"));
        fs::create_directory_symlink(BUILT, root(ASSETS));
        replay.settings = {{"wifi_if_on", "1"}, {"language_lcd", "en"}, {"wifi_ssid", "Orvane"}};
        for (const ShownFile &file : shown_files)
            write(file.path, file.former);
        write("/tmp/lcd/network_status/speed/pcs", "12 1572864\n");
        silently([] {
            panel_start();
            pass(640);
        });
    }
    ~Files() override
    {
        EXPECT_EQ(layer.allocations, 0);
        fs::remove_all(folder);
    }

    fs::path root(const std::string &router_path) const { return folder / router_path.substr(1); }

    void write(const std::string &router_path, const std::string &bytes) const
    {
        fs::create_directories(root(router_path).parent_path());
        put(root(router_path), bytes);
    }

    static void pass(unsigned count)
    {
        for (; count > 0; count--) {
            lcd_tick_handler(SIGALRM);
            panel_pass();
        }
    }

    template <typename Run> static void silently(Run run)
    {
        testing::internal::CaptureStdout();
        run();
        fflush(stdout);
        testing::internal::GetCapturedStdout();
    }

    /* The picture of a screen that is entered now. */
    static Picture picture_of(const char *screen)
    {
        set_lcd_event_id(EVENT_INFO);
        silently([&] { switch_screen(screen); });
        return shown();
    }

    static Picture shown()
    {
        Picture picture;
        std::copy(std::begin(replay.frame), std::end(replay.frame), picture.begin());
        return picture;
    }

    /* What the screen shows of each of `states` of the file. */
    template <typename States> std::set<Picture> pictures_of(const ShownFile &file, const States &states) const
    {
        std::set<Picture> pictures;
        for (const bool peaks_known : {false, true})
            for (const std::string &state : states) {
                put(root(file.path), state);
                const Picture picture = picture_of(file.screen);
                if (peaks_known)
                    pictures.insert(picture);
            }
        put(root(file.path), file.former);
        picture_of(file.screen);
        return pictures;
    }

    const fs::path folder;
};

TEST_F(Files, EveryPrefixIsShownAndForgotten)
{
    for (const ShownFile &file : shown_files) {
        SCOPED_TRACE(file.path);
        write(file.path, file.latter);
        const Picture whole = picture_of(file.screen);
        for (size_t length = 0; length <= file.latter.size(); length++) {
            write(file.path, file.latter.substr(0, length));
            const Picture cut = picture_of(file.screen);
            EXPECT_EQ(picture_of(file.screen), cut) << "of " << length << " bytes";
            write(file.path, file.latter);
            EXPECT_EQ(picture_of(file.screen), whole) << "after " << length << " bytes";
        }
        write(file.path, file.former);
    }
}

TEST_F(Files, EveryPrefixOfAnAnnouncementIsAnActionOrNone)
{
    const std::string words[] = {"up\n", "event\n", "menu\n"};
    for (const std::string &word : words)
        for (size_t length = 0; length <= word.size(); length++) {
            write("/tmp/lcd/lcd_action", word.substr(0, length));
            write("/tmp/lcd/lcd_event", "lost link\n"s.substr(0, length));
            const bool whole = word != "event\n" && length >= word.size() - 1;
            EXPECT_EQ(read_lcd_input(), whole) << word << length;
        }
}

TEST_F(Files, EveryPrefixOfAPackIsRefusedOrCurrent)
{
    std::ifstream file(BUILT / "_auto_lang_/_auto_language_de", std::ios::binary);
    const std::string pack{std::istreambuf_iterator<char>(file), {}};
    const auto text_in = [](int id) {
        silently([id] { load_language(id); });
        return std::string(ml_str(TEXT_PLEASE_WAIT));
    };
    const std::string german = text_in(LANGUAGE_DE), english = text_in(LANGUAGE_EN);
    fs::remove(root(ASSETS));
    fs::create_directories(root(ASSETS));
    fs::create_directory_symlink(BUILT / "_auto_bitmap_", root(ASSETS) / "_auto_bitmap_");
    fs::create_directory(root(ASSETS) / "_auto_lang_");
    fs::copy(BUILT / "_auto_lang_/_auto_language_en", root(ASSETS) / "_auto_lang_");
    layer.assets_in_memory = false;
    for (size_t length = 0; length <= pack.size(); length += length < 100 || length + 100 > pack.size() ? 1 : 37) {
        const std::string start = pack.substr(0, length);
        write(ASSETS + "/_auto_lang_/_auto_language_de"s, start);
        silently([] {
            load_language(LANGUAGE_EN);
            load_language(LANGUAGE_DE);
            switch_screen("menu");
        });
        const bool marked = length >= 3, whole = std::ranges::count(start, '\0') >= TEXT_COUNT - 1;
        EXPECT_EQ(get_current_language(), marked ? LANGUAGE_DE : LANGUAGE_EN) << length;
        EXPECT_EQ(ml_str(TEXT_PLEASE_WAIT), !marked ? english : whole ? german : "") << length;
    }
    silently([] { load_language(LANGUAGE_EN); });
}

/* Between any two calls of a redraw the writer may have come to any of its states. */
TEST_F(Files, AChangeBeforeAnyCallShowsAState)
{
    for (const ShownFile &file : shown_files) {
        SCOPED_TRACE(file.path);
        const std::set<Picture> pictures = pictures_of(file, states_of(file));
        for (size_t first = 0; first < std::size(changes); first++)
            for (unsigned moment = 1, calls = moment; moment <= calls; moment += moment < 60 ? 1 : 41) {
                put(root(file.path), states_of(file)[first]);
                calls = 0;
                layer.armed = true;
                layer.before_call = [&] {
                    if (++calls == moment)
                        changes[first](root(file.path), file);
                };
                const Picture picture = picture_of(file.screen);
                layer.armed = false;
                EXPECT_TRUE(pictures.contains(picture)) << "change " << first << " before call " << moment;
            }
        put(root(file.path), file.former);
    }
}

TEST_F(Files, AWriterAtFullSpeedIsShownInItsStates)
{
    const unsigned redraws = 1000;
    for (const ShownFile &file : shown_files) {
        SCOPED_TRACE(file.path);
        const std::set<Picture> pictures = pictures_of(file, torn_states_of(file));
        std::set<Picture> seen;
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0)
            for (size_t next = 0;; next = (next + 1) % std::size(changes))
                changes[next](root(file.path), file);
        for (unsigned i = 0; i < redraws || (seen.size() < 2 && i < 100 * redraws); i++) {
            const Picture picture = picture_of(file.screen);
            EXPECT_TRUE(pictures.contains(picture)) << "redraw " << i;
            seen.insert(picture);
        }
        EXPECT_GE(seen.size(), 2u);
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        put(root(file.path), file.former);
    }
}
