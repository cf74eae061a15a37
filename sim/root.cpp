#include "sim/root.h"

#include "sim/files.h"
#include "sim/router_files.h"

#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/file.h>

namespace fs = std::filesystem;

namespace sim {

static constexpr const char *MARK_FILE = ".router-root"; // tells a router's root; locked by its simulator

static constexpr const char *kept_folders[] = {
    "bin", "sbin", "usr/bin", "usr/sbin", "etc", "nvram", STATUS_SOURCE, SPEED_SOURCE,
};
static constexpr const char *memory_folders[] = {"tmp", "var", "proc"};

static constexpr const char *program_links[] = {
    "bin/echo",  "bin/ps",  "bin/sleep", "sbin/5416regc", "sbin/iwlist", "sbin/reboot", "usr/sbin/network_status",
    "usr/sbin/pc_monitor", "usr/sbin/rc",
};

/* Makes the folder `dir`, or a new one when it has no name. */
static fs::path make_folder(const fs::path &dir)
{
    const fs::path asked = dir.empty() ? fs::temp_directory_path() / "panel-sim-XXXXXX" : dir;
    std::string name = fs::weakly_canonical(fs::absolute(asked));
    if (name.find(':') != std::string::npos)
        throw std::runtime_error(name + ": the daemon's PATH cannot hold a folder with a colon in its name");
    if (!dir.empty())
        fs::create_directories(name);
    else if (!mkdtemp(name.data()))
        fail(name);
    return fs::canonical(name);
}

/* Takes `dir` for this simulator alone: the memory folders are going to be emptied. */
static Fd claim(const fs::path &dir)
{
    const fs::path mark = dir / MARK_FILE;
    if (!fs::is_empty(dir) && !fs::exists(mark))
        throw std::runtime_error(dir.string() + ": not empty, and no router root that panel-sim has made");
    Fd lock(open(mark.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!lock)
        fail(mark);
    if (flock(lock.get(), LOCK_EX | LOCK_NB) < 0)
        throw std::runtime_error(dir.string() + ": another simulator runs on this root");
    return lock;
}

static void link(const fs::path &target, const fs::path &name)
{
    fs::remove(name);
    fs::create_symlink(fs::canonical(target), name);
}

Root::Root(const fs::path &dir, const RootSources &sources)
    : dir_(make_folder(dir)), temporary_(dir.empty()), lock_(claim(dir_))
{
    for (const char *folder : kept_folders)
        fs::create_directories(dir_ / folder);
    for (const char *name : program_links)
        link(sources.programs, dir_ / name);
    link(sources.daemon, dir_ / DAEMON_PROGRAM);
    link(sources.assets / ASSETS_FOLDER, dir_ / ASSETS_FOLDER);
    power_on();
}

Root::~Root()
{
    std::error_code ignored;
    if (temporary_)
        fs::remove_all(dir_, ignored);
}

void Root::power_on() const
{
    for (const char *folder : memory_folders) {
        fs::remove_all(dir_ / folder);
        fs::create_directories(dir_ / folder);
    }
    fs::create_directories(dir_ / SPEED_FOLDER);
    write_file(dir_ / PAIRING_FILE, "");
}

} // namespace sim
