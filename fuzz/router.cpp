#include "fuzz/router.h"

#include "fuzz/fuzz.h"
#include "lang/language.h"
#include "platform/nvram.h"
#include "platform/router.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <net/if.h>
#include <string_view>
#include <unistd.h>

static constexpr std::string_view PACKS = "/sbin/lcd_ml/_auto_lang_/";
static constexpr std::string_view GLYPHS = "/sbin/lcd_ml/_auto_bitmap_/U_";
static constexpr size_t CODE_DIGITS = 4;
static constexpr int GLYPH_HEIGHTS[] = {12, 20, 30};
static constexpr unsigned char GLYPH_ROW = 0xB5;
static constexpr size_t FRAME_MESSAGE_BYTES = 1040;

/* Descriptors from here on are ours; all others are the system's. */
static constexpr int FIRST_DESCRIPTOR = 1 << 20;

struct Descriptor {
    bool open;
    std::string *file;        // what it writes to; null: it only reads
    std::string_view content; // what is still to be read
    char glyph[64];
};

/* The router that is, and what is open on it. */
static FuzzRouter *router;
static Descriptor descriptors[8];
static int queries;

FuzzRouter::FuzzRouter()
{
    router = this;
    queries = 0;
}

FuzzRouter::~FuzzRouter()
{
    require(std::ranges::none_of(descriptors, &Descriptor::open), "every descriptor is closed");
}

static Descriptor *find_descriptor(int fd)
{
    if (fd < FIRST_DESCRIPTOR)
        return nullptr;
    Descriptor &descriptor = descriptors[fd - FIRST_DESCRIPTOR];
    require(descriptor.open, "a descriptor in use is open");
    return &descriptor;
}

static int open_descriptor(std::string *file, std::string_view content)
{
    const auto free = std::ranges::find(descriptors, false, &Descriptor::open);
    require(free != std::end(descriptors), "few descriptors are open at a time");
    *free = {.open = true, .file = file, .content = content, .glyph = {}};
    return FIRST_DESCRIPTOR + static_cast<int>(free - descriptors);
}

/* The glyph "U_XXXX" or "U_XXXX_FONT". */
static int open_glyph(std::string_view name)
{
    if (name.size() < CODE_DIGITS || name[CODE_DIGITS - 1] == 'F')
        return -1;
    const int digit = name[CODE_DIGITS - 1]; // differs between neighbours
    const int font = name.size() > CODE_DIGITS ? name.back() - '0' : 1;
    const int height = GLYPH_HEIGHTS[font - 1];
    const int fd = open_descriptor(nullptr, {});
    Descriptor &descriptor = descriptors[fd - FIRST_DESCRIPTOR];
    memset(descriptor.glyph, GLYPH_ROW, sizeof descriptor.glyph);
    descriptor.glyph[0] = descriptor.glyph[2] = 0;
    descriptor.glyph[1] = static_cast<char>(1 + digit % 8);
    descriptor.glyph[3] = static_cast<char>(height);
    descriptor.content = {descriptor.glyph, static_cast<size_t>(4 + height)};
    return fd;
}

static std::string made_pack()
{
    std::string pack = "\xEF\xBB\xBF";
    for (int i = 0; i < TEXT_COUNT; i++)
        pack.append(std::to_string(i)).push_back('\0');
    return pack;
}

/* What the files that no input has put there hold. */
static int open_made_file(std::string_view path)
{
    static const std::string pack = made_pack();
    if (path.starts_with(PACKS))
        return open_descriptor(nullptr, pack);
    return path.starts_with(GLYPHS) ? open_glyph(path.substr(GLYPHS.size())) : -1;
}

int router_open(const char *path, int flags)
{
    errno = ENOENT;
    auto file = router->files.find(std::string_view(path));
    if (file == router->files.end() && (flags & O_CREAT))
        file = router->files.emplace(path, "").first;
    if (file != router->files.end()) {
        if (flags & O_TRUNC)
            file->second.clear();
        return open_descriptor(&file->second, file->second);
    }
    return open_made_file(path);
}

/* The linker puts these in the place of the system's. */
extern "C" {
ssize_t __real_read(int fd, void *buffer, size_t size);
ssize_t __real_write(int fd, const void *buffer, size_t size);
int __real_close(int fd);

ssize_t __wrap_read(int fd, void *buffer, size_t size)
{
    Descriptor *descriptor = find_descriptor(fd);
    if (!descriptor)
        return __real_read(fd, buffer, size);
    const size_t count = descriptor->content.copy(static_cast<char *>(buffer), size);
    descriptor->content.remove_prefix(count);
    return static_cast<ssize_t>(count);
}

ssize_t __wrap_write(int fd, const void *buffer, size_t size)
{
    Descriptor *descriptor = find_descriptor(fd);
    if (!descriptor)
        return __real_write(fd, buffer, size);
    descriptor->file->append(static_cast<const char *>(buffer), size);
    return static_cast<ssize_t>(size);
}

int __wrap_close(int fd)
{
    Descriptor *descriptor = find_descriptor(fd);
    if (!descriptor)
        return __real_close(fd);
    descriptor->open = false;
    return 0;
}
}

bool router_exists(const char *path)
{
    return router->files.contains(std::string_view(path));
}

int router_remove(const char *path)
{
    return router->files.erase(path) > 0 ? 0 : -1;
}

int router_system(const char *)
{
    return 0;
}

static ssize_t read_output(void *output, char *buffer, size_t size)
{
    auto *rest = static_cast<std::string_view *>(output);
    const size_t count = rest->copy(buffer, size);
    rest->remove_prefix(count);
    return static_cast<ssize_t>(count);
}

FILE *router_popen(const char *)
{
    static std::string_view rest;
    rest = router->output;
    return fopencookie(&rest, "r", {.read = read_output, .write = nullptr, .seek = nullptr, .close = nullptr});
}

int router_pclose(FILE *stream)
{
    return fclose(stream);
}

time_t router_time()
{
    return router->clock;
}

tm *router_local_time(time_t t, tm *local)
{
    return gmtime_r(&t, local);
}

int router_start_tick(const itimerval *)
{
    return 0;
}

int router_interface_socket()
{
    return open_descriptor(nullptr, {});
}

int router_interface_query(int, unsigned long, ifreq *interface)
{
    memcpy(&interface->ifr_addr, router->address.data(), router->address.size());
    return router->failing_queries >> queries++ % 8 & 1 ? -1 : 0;
}

int router_display_socket()
{
    return open_descriptor(nullptr, {});
}

int router_display_bind(int, uint32_t)
{
    return 0;
}

ssize_t router_display_send(int, const void *, size_t size)
{
    require(size == FRAME_MESSAGE_BYTES, "a frame's message has the driver's size");
    return static_cast<ssize_t>(size);
}

char *nvram_get(const char *key)
{
    const auto setting = router->settings.find(std::string_view(key));
    return setting == router->settings.end() ? nullptr : strdup(setting->second.c_str());
}

char *nvram_safe_get(const char *key)
{
    char *value = nvram_get(key);
    return value ? value : strdup("");
}

int nvram_set(const char *key, const char *value)
{
    router->settings[key] = value;
    return 0;
}

int nvram_commit()
{
    return 0;
}

void use_language(int id)
{
    if (get_current_language() != id || *ml_str(0) == '\0')
        load_language(id);
}
