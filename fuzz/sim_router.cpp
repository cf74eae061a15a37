#include "fuzz/sim_router.h"

#include "fuzz/fuzz.h"
#include "platform/desk/settings_file.h"
#include "sim/control.h"
#include "sim/files.h"
#include "sim/picture_files.h"
#include "sim/places.h"
#include "sim/processes.h"
#include "sim/router_files.h"
#include "sim/settings.h"
#include "sim/text.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <map>
#include <optional>
#include <pthread.h>
#include <sstream>
#include <sys/mman.h>
#include <sys/signalfd.h>
#include <utility>

/* The router that is. */
static std::optional<sim::Router> router;
static std::map<std::string, std::string, std::less<>> files; // below its root, by their names
static std::function<void(uint64_t)> on_tick;
static unsigned slow_ticks; // so many are left that pass one by one
static unsigned passes;     // of its daemon
static uint64_t writes;     // and removals of files
static bool asked;          // its own thread has something to do

static constexpr unsigned SLOW_TICKS = 24;
static constexpr unsigned HURRY = 1200;       // ticks that pass at once when no slow one is left
static constexpr unsigned PICTURE_PERIOD = 8; // passes from one picture of the daemon to the next
static constexpr time_t POWER_ON_TIME = 1700000000;
static constexpr std::string_view ASSET = "some asset";

static const std::string &root_folder()
{
    static const std::string folder = [] {
        const std::string root = scratch_folder() + "/root";
        for (const char *each : {"run", "nvram"})
            std::filesystem::create_directories(root + "/" + each);
        return root;
    }();
    return folder;
}

/* The name below the root of the file `path`; nothing when it is elsewhere. */
static std::optional<std::string> name_of(const std::string &path)
{
    const std::string &root = root_folder();
    if (!path.starts_with(root) || path[root.size()] != '/')
        return std::nullopt;
    require(("/" + path + "/").find("/../") == std::string::npos, "no path leads out of the root");
    return path.substr(path.find_first_not_of('/', root.size()));
}

/* The same of a file that is going to be changed. */
static std::string written_name(const std::string &path)
{
    const auto name = name_of(path);
    require(name.has_value(), "nothing is written outside of the root");
    writes++;
    return *name;
}

namespace sim
{

/* In the place of sim/files.cpp. */

static std::optional<std::string> read_from_disk(const std::string &path)
{
    static std::map<std::string, std::string> known;
    if (const auto file = known.find(path); file != known.end())
        return file->second;
    const Fd file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string text(1 << 20, '\0');
    const ssize_t size = read(file.get(), text.data(), text.size());
    if (size < 0)
        return std::nullopt;
    text.resize(static_cast<size_t>(size));
    return known[path] = text;
}

std::optional<std::string> read_file(const std::filesystem::path &path)
{
    const auto name = name_of(path.native());
    if (!name)
        return read_from_disk(path);
    if (name->starts_with(ASSETS_FOLDER))
        return std::string(ASSET);
    const auto file = files.find(*name);
    return file == files.end() ? std::nullopt : std::optional(file->second);
}

void write_file(const std::filesystem::path &path, std::string_view text)
{
    files.insert_or_assign(written_name(path.native()), std::string(text));
}

void remove_file(const std::filesystem::path &path)
{
    files.erase(written_name(path.native()));
}

/* In the place of sim/root.cpp. */

Root::Root(const std::filesystem::path &, const RootSources &) : dir_(root_folder()), temporary_(false)
{
    power_on();
}

Root::~Root()
{
    require(!temporary_, "the scratch folder is not the simulator's");
}

void Root::power_on() const
{
    std::erase_if(files, [](const auto &file) {
        return file.first.starts_with("tmp/") || file.first.starts_with("var/") || file.first.starts_with("proc/");
    });
}

/* In the place of sim/clock.cpp: ticks pass when they are asked for or waited for, and the time that an input may take
 * is soon over. */

void Clock::start(std::function<void(uint64_t)> tick)
{
    on_tick = std::move(tick);
}

void Clock::set_speed(unsigned speed)
{
    require(speed <= FASTEST, "the clock has that pace");
    speed_ = speed;
}

void Clock::advance(unsigned ticks)
{
    while (ticks > 0) {
        const unsigned step = slow_ticks > 0 ? 1 : std::max(ticks, HURRY);
        slow_ticks -= std::min(slow_ticks, 1U);
        ticks -= std::min(ticks, step);
        on_tick(ticks_ += step);
    }
}

/* In the place of sim/processes.cpp and sim/router_processes.cpp. */

std::vector<RouterProcess> router_processes(const std::filesystem::path &)
{
    return {};
}

RouterProcesses::RouterProcesses(const std::filesystem::path &root) : root_(root) {}
RouterProcesses::~RouterProcesses() = default;
void RouterProcesses::start() {}
void RouterProcesses::start_daemon() {}
void RouterProcesses::signal_daemon(int) const {}
void RouterProcesses::take(const Telling &) {}
void RouterProcesses::end() {}

bool RouterProcesses::await_rest()
{
    return true;
}

std::optional<int> RouterProcesses::reap()
{
    return std::nullopt;
}

/* The daemon shows a picture now and then; without its driver it prints something. */
void RouterProcesses::send_tick()
{
    if (++passes % PICTURE_PERIOD != 0)
        return;
    const uint64_t ticks = router->clock().ticks();
    Pixels pixels;
    pixels.fill(static_cast<uint8_t>(passes / PICTURE_PERIOD));
    if (files.contains(NO_DRIVER_FILE))
        router->feed().happen(Happened::PRINT, "no driver", ticks);
    else
        router->feed().show(pixels, ticks);
}

/* In the place of sim/picture_files.cpp: what takes long there depends on the scale alone. */

std::string png_file(const Picture &, Look, unsigned scale)
{
    require(scale >= 1 && scale <= LARGEST_SCALE, "a picture can have that scale");
    return "PNG";
}

std::string gif_file(std::span<const Still> stills, Look, unsigned scale)
{
    require(scale >= 1 && scale <= LARGEST_SCALE && !stills.empty(), "a recording can have that scale");
    for (const Still &still : stills)
        require(still.hundredths >= 2 && still.hundredths <= 200, "a picture is seen, and not for long");
    return "GIF";
}

} // namespace sim

/* In the place of platform/desk/settings_file.cpp. */

/* The store's lines without those of `key`. */
static std::string other_settings(const std::string &store, const char *key)
{
    std::string others;
    std::istringstream lines(store);
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with(std::string(key) + "="))
            others += line + "\n";
    return others;
}

char *settings_get(const SettingsFile &file, const char *key)
{
    const std::string store = "\n" + sim::read_file(file.path).value_or(""), line = "\n" + std::string(key) + "=";
    const size_t begin = store.find(line);
    if (begin == std::string::npos)
        return nullptr;
    const size_t value = begin + line.size();
    return strdup(sim::unescaped(store.substr(value, store.find('\n', value) - value)).value_or("").c_str());
}

int settings_set(const SettingsFile &file, const char *key, const char *value)
{
    require(sim::is_setting_key(key), "a setting has a possible key");
    std::string &store = files[written_name(file.path)];
    store = other_settings(store, key) + key + "=" + sim::escaped(value) + "\n";
    return 0;
}

int settings_copy(const SettingsFile &from, const SettingsFile &to)
{
    files[written_name(to.path)] = files[written_name(from.path)];
    return 0;
}

/* The linker puts these in the place of the system's: who waits lets a tick pass, and what is sent is for the router's
 * own thread. */
extern "C" {
int __wrap_pthread_cond_clockwait(pthread_cond_t *, pthread_mutex_t *mutex, clockid_t, const timespec *)
{
    pthread_mutex_unlock(mutex);
    router->clock().advance(1);
    pthread_mutex_lock(mutex);
    return 0;
}

ssize_t __real_send(int socket, const void *message, size_t size, int flags);

ssize_t __wrap_send(int socket, const void *message, size_t size, int flags)
{
    asked = true;
    return __real_send(socket, message, size, flags);
}
}

/* A file that reads as a signalfd after the signal that ends the simulator. */
static const sim::Fd &end_signal()
{
    static const sim::Fd signal = [] {
        sim::Fd fd(memfd_create("signal", MFD_CLOEXEC));
        signalfd_siginfo end = {};
        end.ssi_signo = SIGTERM;
        require(write(fd.get(), &end, sizeof end) == sizeof end, "memory for a file");
        return fd;
    }();
    lseek(signal.get(), 0, SEEK_SET);
    return signal;
}

uint64_t sim_router_writes()
{
    return writes;
}

void run_sim_router()
{
    if (std::exchange(asked, false))
        router->run(end_signal());
}

sim::Router &renew_sim_router()
{
    static decltype(files) flash; // a router that was on before has its settings
    router.reset();
    files = flash;
    slow_ticks = SLOW_TICKS;
    passes = 0;
    router.emplace(root_folder(), sim::RootSources{});
    flash = files;
    router->set_time(POWER_ON_TIME);
    router->clock().set_speed(0);
    for (const char *message : {"captures ps", "output a\nb", "set wifi_channel 6", "waits"})
        sim::tell_simulator(root_folder(), message);
    run_sim_router();
    sim::Pixels pixels = {};
    router->feed().show(pixels, router->clock().ticks());
    return *router;
}
