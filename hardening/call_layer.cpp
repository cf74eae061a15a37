#include "hardening/call_layer.h"

#include "platform/desk/command.h"

#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <unordered_map>

CallLayer layer;

const char *const call_names[CALL_KINDS] = {
    "open",   "access", "read", "write", "unlink", "rename", "mkdir", "fstat", "flock", "malloc",
    "socket", "bind",   "send", "ioctl", "system", "popen",  "fgets", "timer", "ppoll", "nvram",
};

static constexpr size_t MESSAGE_BYTES = 1040;
static constexpr int FIRST_ASSET = 1 << 20; // descriptors from here on are assets in memory
static constexpr std::string_view ASSETS = "sbin/lcd_ml/", LOCK = "lcd_wp";

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

struct OpenAsset {
    const std::string *bytes = nullptr; // null: free
    size_t at = 0;
};
static OpenAsset open_assets[4];
static int input_fd = -1; // of the key or event file that is being read

/* Counts a call. True with errno set when it is the one that fails. */
static bool fails(CallKind kind)
{
    if (!layer.armed)
        return false;
    if (layer.before_call)
        layer.before_call();
    if (++layer.counts[kind] != layer.nth || kind != layer.kind)
        return false;
    errno = layer.error;
    return true;
}

/* A fault of input: the user has to press the key again. */
static bool input_fails(CallKind kind, bool input)
{
    const bool failed = fails(kind);
    layer.input_failed |= failed && input;
    return failed;
}

static void *held(void *block)
{
    layer.allocations += block != nullptr;
    return block;
}

int lowest_descriptor()
{
    const int fd = dup(STDIN_FILENO);
    close(fd);
    return fd;
}

std::filesystem::path make_root_folder()
{
    for (const char *place : {"/dev/shm", "/tmp"}) {
        std::string name = std::string(place) + "/panel-hardening-XXXXXX";
        if (mkdtemp(name.data()))
            return name;
    }
    throw std::runtime_error("no folder for a router root");
}

/* The asset `name` in memory, read at its first use; null when it is missing. */
static const std::string *find_asset(int folder, const char *name)
{
    static std::unordered_map<std::string, std::string, TextHash, std::equal_to<>> assets;
    const auto known = assets.find(std::string_view(name));
    if (known != assets.end())
        return &known->second;
    FILE *file = fopen(("/proc/self/fd/" + std::to_string(folder) + '/' + name).c_str(), "r");
    if (!file)
        return nullptr;
    std::string bytes(1 << 16, '\0');
    bytes.resize(fread(bytes.data(), 1, bytes.size(), file));
    fclose(file);
    return &assets.emplace(name, bytes).first->second;
}

void preload_assets()
{
    const std::string folder = std::string(ASSETS) + "_auto_bitmap_/";
    const auto path = "/proc/self/fd/" + std::to_string(layer.root_fd) + '/' + folder;
    for (const auto &entry : std::filesystem::directory_iterator(path)) {
        const std::string name = entry.path().filename();
        if (!name.starts_with("U_") || name.starts_with("U_00"))
            find_asset(layer.root_fd, (folder + name).c_str());
    }
}

static int open_asset(const std::string *bytes)
{
    for (OpenAsset &asset : open_assets) {
        if (asset.bytes)
            continue;
        asset = {bytes, 0};
        layer.asset_files++;
        return FIRST_ASSET + static_cast<int>(&asset - open_assets);
    }
    abort();
}

/* Whether the daemon changes what `path` names by more than the display's lock. */
static bool is_kept(std::string_view path)
{
    return !path.ends_with(LOCK);
}

extern "C" {
#define REAL(result, name, ...) result __real_##name(__VA_ARGS__);
REAL(int, open, const char *, int, ...)
REAL(int, openat, int, const char *, int, ...)
REAL(ssize_t, read, int, void *, size_t)
REAL(int, close, int)
REAL(int, unlinkat, int, const char *, int)
REAL(void *, malloc, size_t)
REAL(void *, calloc, size_t, size_t)
REAL(void *, realloc, void *, size_t)
REAL(char *, strdup, const char *)
REAL(char *, strndup, const char *, size_t)
REAL(void, free, void *)
REAL(int, socket, int, int, int)
REAL(ssize_t, sendto, int, const void *, size_t, int, const sockaddr *, socklen_t)
REAL(int, system, const char *)
REAL(FILE *, popen, const char *, const char *)
REAL(char *, nvram_get, const char *)
REAL(char *, nvram_safe_get, const char *)
REAL(int, nvram_set, const char *, const char *)
REAL(int, nvram_commit)

/* Calls that have nothing to them but that they may fail. */
#define PLAIN(kind, result, failed, name, parameters, arguments) \
    result __real_##name parameters;                             \
    result __wrap_##name parameters                              \
    {                                                            \
        return fails(kind) ? failed : __real_##name arguments;   \
    }
PLAIN(CALL_EXISTS, int, -1, faccessat, (int folder, const char *path, int mode, int flags), (folder, path, mode, flags))
PLAIN(CALL_WRITE, ssize_t, -1, write, (int fd, const void *bytes, size_t size), (fd, bytes, size))
PLAIN(CALL_RENAME, int, -1, renameat, (int from, const char *path, int to, const char *name), (from, path, to, name))
PLAIN(CALL_MKDIR, int, -1, mkdirat, (int folder, const char *path, mode_t mode), (folder, path, mode))
PLAIN(CALL_FSTAT, int, -1, fstat, (int fd, struct stat *status), (fd, status))
PLAIN(CALL_FLOCK, int, -1, flock, (int fd, int operation), (fd, operation))
PLAIN(CALL_IOCTL, int, -1, ioctl, (int fd, unsigned long request, void *argument), (fd, request, argument))
PLAIN(CALL_STREAM, FILE *, nullptr, fdopen, (int fd, const char *mode), (fd, mode))
PLAIN(CALL_STREAM, char *, nullptr, fgets, (char *text, int size, FILE *stream), (text, size, stream))

int __wrap_openat(int folder, const char *path, int flags, ...)
{
    const std::string_view name = path;
    const bool input = name.ends_with("lcd_action") || name.ends_with("lcd_event");
    if (input_fails(CALL_OPEN, input))
        return -1;
    if (layer.assets_in_memory && name.starts_with(ASSETS))
        if (const std::string *bytes = find_asset(folder, path))
            return open_asset(bytes);
    const int fd = __real_openat(folder, path, flags, 0644);
    layer.changed_files |= (flags & O_ACCMODE) != O_RDONLY && is_kept(name);
    if (input)
        input_fd = fd;
    return fd;
}

int __wrap_open(const char *path, int flags, ...)
{
    return layer.root.empty() ? __real_open(path, flags, 0644) : __wrap_openat(layer.root_fd, path + 1, flags);
}

int __wrap_access(const char *path, int mode)
{
    return __wrap_faccessat(layer.root_fd, path + 1, mode, 0);
}

ssize_t __wrap_read(int fd, void *buffer, size_t size)
{
    /* Behind its word the file has no more to tell, and an interrupted reader reads on. */
    if (input_fails(CALL_READ, fd == input_fd && lseek(fd, 0, SEEK_CUR) == 0 && layer.error != EINTR))
        return -1;
    if (fd < FIRST_ASSET)
        return __real_read(fd, buffer, size);
    OpenAsset &asset = open_assets[fd - FIRST_ASSET];
    const size_t count = asset.bytes->copy(static_cast<char *>(buffer), size, asset.at);
    asset.at += count;
    return static_cast<ssize_t>(count);
}

int __wrap_close(int fd)
{
    if (fd == input_fd)
        input_fd = -1;
    if (fd < FIRST_ASSET)
        return __real_close(fd);
    open_assets[fd - FIRST_ASSET] = {};
    layer.asset_files--;
    return 0;
}

int __wrap_unlinkat(int folder, const char *path, int flags)
{
    if (fails(CALL_UNLINK)) {
        /* What is missing is not there: somebody else has removed it. */
        if (errno == ENOENT)
            __real_unlinkat(folder, path, flags);
        errno = layer.error;
        return -1;
    }
    const int result = __real_unlinkat(folder, path, flags);
    layer.changed_files |= result == 0 && is_kept(path);
    return result;
}

int __wrap_unlink(const char *path)
{
    return __wrap_unlinkat(layer.root_fd, path + 1, 0);
}

void *__wrap_malloc(size_t size)
{
    return fails(CALL_MEMORY) ? nullptr : held(__real_malloc(size));
}

void *__wrap_calloc(size_t count, size_t size)
{
    return fails(CALL_MEMORY) ? nullptr : held(__real_calloc(count, size));
}

void *__wrap_realloc(void *block, size_t size)
{
    if (fails(CALL_MEMORY))
        return nullptr;
    void *resized = __real_realloc(block, size);
    return block ? resized : held(resized);
}

char *__wrap_strdup(const char *text)
{
    return fails(CALL_MEMORY) ? nullptr : static_cast<char *>(held(__real_strdup(text)));
}

char *__wrap_strndup(const char *text, size_t size)
{
    return fails(CALL_MEMORY) ? nullptr : static_cast<char *>(held(__real_strndup(text, size)));
}

void __wrap_free(void *block)
{
    layer.allocations -= block != nullptr;
    __real_free(block);
}

int __wrap_socket(int family, int type, int protocol)
{
    if (fails(CALL_SOCKET))
        return -1;
    /* This machine's kernel has no display driver. */
    return family == AF_NETLINK ? __real_socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)
                                : __real_socket(family, type, protocol);
}

int __wrap_bind(int, const sockaddr *, socklen_t)
{
    return fails(CALL_BIND) ? -1 : 0;
}

ssize_t __wrap_sendto(int fd, const void *message, size_t size, int flags, const sockaddr *to, socklen_t to_size)
{
    if (fails(CALL_SEND))
        return -1;
    if (size == MESSAGE_BYTES) {
        memcpy(layer.picture.data(), static_cast<const char *>(message) + MESSAGE_BYTES - layer.picture.size(),
               layer.picture.size());
        layer.pictures++;
    }
    return to ? __real_sendto(fd, message, size, flags, to, to_size) : static_cast<ssize_t>(size);
}

ssize_t __wrap_send(int fd, const void *message, size_t size, int flags)
{
    return __wrap_sendto(fd, message, size, flags, nullptr, 0);
}

/* `command` below the root. A fault of kind ENOENT leaves the shell itself out. */
static const char *rooted(const char *command, bool no_shell)
{
    static char text[4 * PATH_MAX];
    if (no_shell)
        return "exit 127";
    if (layer.root.empty())
        return command;
    return root_command(text, layer.root.c_str(), command) ? text : "exit 127";
}

int __wrap_system(const char *command)
{
    const bool failed = fails(CALL_SYSTEM);
    if (failed && errno != ENOENT)
        return -1;
    layer.changed_files = true;
    return __real_system(rooted(command, failed));
}

FILE *__wrap_popen(const char *command, const char *mode)
{
    const bool failed = fails(CALL_POPEN);
    return failed && errno != ENOENT ? nullptr : __real_popen(rooted(command, failed), mode);
}

int __wrap_setitimer(int, const itimerval *, itimerval *)
{
    /* Whoever plays sends the ticks. */
    return fails(CALL_TIMER) ? -1 : 0;
}

int __wrap_ppoll(pollfd *, nfds_t, const timespec *, const sigset_t *)
{
    return fails(CALL_POLL) ? -1 : 0;
}

time_t __wrap_time(time_t *)
{
    return layer.clock;
}

/* A copy from the router's library: its memory is not seen here, its owner is the daemon all the same. */
static char *from_library(char *value)
{
    return layer.root.empty() ? value : static_cast<char *>(held(value));
}

char *__wrap_nvram_get(const char *key)
{
    return fails(CALL_SETTINGS) ? nullptr : from_library(__real_nvram_get(key));
}

char *__wrap_nvram_safe_get(const char *key)
{
    return fails(CALL_SETTINGS) ? nullptr : from_library(__real_nvram_safe_get(key));
}

int __wrap_nvram_set(const char *key, const char *value)
{
    layer.changed_files = true;
    return fails(CALL_SETTINGS) ? -1 : __real_nvram_set(key, value);
}

int __wrap_nvram_commit()
{
    layer.changed_files = true;
    return fails(CALL_SETTINGS) ? -1 : __real_nvram_commit();
}
}
