#include "hardening/fault_walk.h"

#include "core/input.h"
#include "core/main_loop.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "hardening/call_layer.h"
#include "platform/nvram.h"
#include "platform/router.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

static constexpr const char *WORLD_FOLDERS[] = {"tmp", "var", "proc", "nvram", "run", "etc"};
static constexpr const char *PROGRAMS[] = {"/bin/ps",
                                           "/bin/echo",
                                           "/bin/sleep",
                                           "/bin/rc",
                                           "/sbin/reboot",
                                           "/sbin/iwlist",
                                           "/sbin/5416regc",
                                           "/usr/sbin/network_status",
                                           "/usr/sbin/pc_monitor"};

static void write_file(const fs::path &path, const std::string &bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

/* A program that prints `text`. */
static void write_program(const fs::path &path, const std::string &text)
{
    write_file(path, "#!/bin/sh\nprintf '%s' '" + text + "'\n");
    fs::permissions(path, fs::perms::all);
}

/* The language pack in `file`, each text cut to a few characters: what fails at a text's fortieth letter fails at its
 * third. */
static std::string shorten_pack(const fs::path &file)
{
    constexpr size_t mark = 3, longest = 3;
    std::ifstream pack(file, std::ios::binary);
    const std::string texts{std::istreambuf_iterator<char>(pack), {}};
    std::string shorter = texts.substr(0, mark);
    for (size_t at = mark, length = 0; at < texts.size(); at++) {
        const char byte = texts[at];
        const bool begins = (byte & 0xC0) != 0x80;
        length = byte == '\0' ? 0 : length + begins;
        if (length <= longest)
            shorter += byte;
    }
    return shorter;
}

static void link_assets(const fs::path &folder)
{
    const fs::path built = BUILT_ROOT "/sbin/lcd_ml";
    fs::create_directories(folder);
    fs::create_directory_symlink(built / "_auto_bitmap_", folder / "_auto_bitmap_");
    for (const auto &entry : fs::directory_iterator(built / "_auto_lang_"))
        write_file(folder / "_auto_lang_" / entry.path().filename(), shorten_pack(entry.path()));
}

WalkRoot::WalkRoot() : path_(make_root_folder())
{
    for (const char *folder : WORLD_FOLDERS)
        fs::create_directories(path_ / folder);
    fs::create_directories(path_ / "tmp/lcd/network_status/speed");
    for (const char *program : PROGRAMS)
        write_program(path_.string() + program, "");
    link_assets(path_ / "sbin/lcd_ml");
    const std::string root = path_.string();
    setenv("PATH", (root + "/bin:" + root + "/sbin:" + root + "/usr/sbin").c_str(), 1);
    setenv("PANEL_ROOT", root.c_str(), 1);
    setenv("PANEL_CLOCK", "simulator", 1);
    setenv("NVRAM_FILE", (root + "/nvram/running").c_str(), 1);
    layer.root_fd = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (REAL_ROUTER)
        layer.root = root;
    else
        router_exists("/tmp"); // the desk opens its root at the first use
}

WalkRoot::~WalkRoot()
{
    fs::remove_all(path_);
}

World WalkRoot::read_world() const
{
    World world;
    for (const char *folder : WORLD_FOLDERS)
        for (const auto &entry : fs::recursive_directory_iterator(path_ / folder))
            if (entry.is_regular_file()) {
                std::ifstream file(entry.path(), std::ios::binary);
                world[entry.path()] = {std::istreambuf_iterator<char>(file), {}};
            }
    return world;
}

void WalkRoot::restore(const World &world) const
{
    const World now = read_world();
    for (const auto &[path, bytes] : now)
        if (!world.contains(path))
            fs::remove(path);
    for (const auto &[path, bytes] : world) {
        const auto known = now.find(path);
        if (known == now.end() || known->second != bytes)
            write_file(path, bytes);
    }
}

bool WalkRoot::play_world_line(const Words &words) const
{
    const std::string &command = words[0];
    const std::string root = path_.string();
    if (command == "nvram") {
        if (nvram_set(words[1].c_str(), words[2].c_str()) < 0)
            throw std::runtime_error("no setting");
    } else if (command == "file") {
        write_file(root + words[1], words[2]);
    } else if (command == "rm") {
        fs::remove(root + words[1]);
    } else if (command == "output") {
        write_program(root + words[1].substr(0, words[1].find(' ')), words[2]);
    } else if (command == "interface") {
        std::ofstream(root + "/etc/interfaces", std::ios::app)
            << words[1] + ' ' + words[2] + ' ' + words[3] + ' ' + words[4] + ' ' + words[5] + '\n';
    } else if (command == "time") {
        write_file(root + "/run/clock", "0 " + words[1] + '\n');
        layer.clock = std::stol(words[1]);
    } else if (command == "key" || command == "event") {
        const bool event = command == "event";
        std::string text = words[1];
        for (size_t i = 2; i < words.size(); i++)
            text += ' ' + words[i];
        write_file(root + (event ? "/tmp/lcd/lcd_event" : "/tmp/lcd/lcd_action"), text + '\n');
        if (event)
            write_file(root + "/tmp/lcd/lcd_action", "event\n");
        lcd_input_handler(SIGUSR1);
    } else if (command == "signal") {
        lcd_language_handler(SIGUSR2);
    } else {
        return false;
    }
    return true;
}

void play_passes(unsigned count)
{
    for (; count > 0; count--) {
        lcd_tick_handler(SIGALRM);
        panel_wait();
        panel_pass();
    }
}

void play_daemon_line(const Words &words)
{
    if (words[0] == "start")
        panel_start();
    else if (words[0] == "goto")
        switch_screen(words[1].c_str());
    else if (words[0] == "pass")
        play_passes(words.size() > 1 ? static_cast<unsigned>(std::stoul(words[1])) : 1);
    else
        throw std::runtime_error("unknown word " + words[0]);
}
