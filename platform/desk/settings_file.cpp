#include "platform/desk/settings_file.h"

#include "platform/escaped_text.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

/* A text on the heap, freed with its owner. */
struct HeapText {
    char *bytes = nullptr;
    size_t size = 0;

    HeapText() = default;
    ~HeapText() { free(bytes); }
    HeapText(const HeapText &) = delete;
    HeapText &operator=(const HeapText &) = delete;

    /* Makes room for `room` bytes in all, once. False when memory has run out. */
    bool reserve(size_t room) { return (bytes = static_cast<char *>(malloc(room + 1))) != nullptr; }

    void append(std::string_view text)
    {
        std::ranges::copy(text, bytes + size);
        size += text.size();
    }

    std::string_view view() const { return {bytes, size}; }
};

/* An open file, closed with its owner. */
struct Descriptor {
    const int fd;

    explicit Descriptor(int opened) : fd(opened) {}
    ~Descriptor()
    {
        if (fd >= 0)
            close(fd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
};

static bool read_store(const SettingsFile &file, HeapText *text)
{
    const Descriptor in(openat(file.folder, file.path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (in.fd < 0)
        return errno == ENOENT;
    struct stat status;
    if (fstat(in.fd, &status) < 0 || !text->reserve(static_cast<size_t>(status.st_size)))
        return false;
    const size_t room = static_cast<size_t>(status.st_size);
    while (const ssize_t count = read(in.fd, text->bytes + text->size, room - text->size)) {
        if (count > 0)
            text->size += static_cast<size_t>(count);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

/* Opens the companion of the store whose name ends in `ending`. */
static int open_beside(const SettingsFile &file, const char *ending, int flags, char (&name)[PATH_MAX])
{
    if (snprintf(name, sizeof name, "%s%s", file.path, ending) >= PATH_MAX) {
        errno = ENAMETOOLONG;
        return -1;
    }
    return openat(file.folder, name, flags | O_CREAT | O_CLOEXEC, 0644);
}

/* Waits for the store's lock, which closing the descriptor gives back. */
static int lock_store(const SettingsFile &file)
{
    char name[PATH_MAX];
    const int fd = open_beside(file, ".lock", O_RDWR, name);
    while (fd >= 0 && flock(fd, LOCK_EX) < 0 && errno == EINTR) {
    }
    return fd;
}

static bool write_all(int fd, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = write(fd, text.data(), text.size());
        if (count > 0)
            text.remove_prefix(static_cast<size_t>(count));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

static int replace_store(const SettingsFile &file, std::string_view text)
{
    char name[PATH_MAX];
    const Descriptor out(open_beside(file, ".new", O_WRONLY | O_TRUNC, name));
    if (out.fd < 0)
        return -1;
    if (write_all(out.fd, text) && renameat(file.folder, name, file.folder, file.path) == 0)
        return 0;
    const int error = errno;
    unlinkat(file.folder, name, 0);
    errno = error;
    return -1;
}

/* Takes the first line off `text`, without its newline. */
static std::string_view take_line(std::string_view *text)
{
    const std::string_view line(text->data(), std::min(text->find('\n'), text->size()));
    text->remove_prefix(std::min(line.size() + 1, text->size()));
    return line;
}

static bool is_setting_of(std::string_view line, std::string_view key)
{
    return line.size() > key.size() && memcmp(line.data(), key.data(), key.size()) == 0 && line[key.size()] == '=';
}

/* The value as a text of its own; null when it is malformed (an unknown escape, a NUL) or memory has run out. */
static char *copy_value(std::string_view escaped)
{
    char *value = strndup(escaped.data(), escaped.size());
    if (!value)
        return nullptr;
    const size_t length = strlen(value);
    const ssize_t size = length < escaped.size() ? -1 : unescape_text(value, length);
    if (size >= 0) {
        value[size] = '\0';
        if (strlen(value) == static_cast<size_t>(size))
            return value;
    }
    free(value);
    return nullptr;
}

char *settings_get(const SettingsFile &file, const char *key)
{
    HeapText store;
    if (!read_store(file, &store))
        return nullptr;
    const size_t value_at = strlen(key) + 1;
    std::string_view rest = store.view();
    while (!rest.empty()) {
        std::string_view line = take_line(&rest);
        if (!is_setting_of(line, key))
            continue;
        line.remove_prefix(value_at);
        if (char *value = copy_value(line))
            return value;
    }
    return nullptr;
}

/* Makes `*line` the line of a setting. False when memory has run out. */
static bool make_line(std::string_view key, std::string_view value, HeapText *line)
{
    const size_t escaped = escape_text({}, value);
    if (!line->reserve(key.size() + 1 + escaped + 1))
        return false;
    line->append(key);
    line->append("=");
    escape_text({line->bytes + line->size, escaped + 1}, value);
    line->size += escaped;
    line->append("\n");
    return true;
}

/* Makes `*changed` the store `old` with `line` in place of the lines of `key`. False when memory has run out. */
static bool change_store(std::string_view old, std::string_view key, std::string_view line, HeapText *changed)
{
    /* The last line of a store written by hand may lack its newline. */
    if (!changed->reserve(old.size() + 1 + line.size()))
        return false;
    while (!old.empty()) {
        const std::string_view old_line = take_line(&old);
        if (!is_setting_of(old_line, key)) {
            changed->append(old_line);
            changed->append("\n");
        } else {
            changed->append(line);
            line = {};
        }
    }
    changed->append(line);
    return true;
}

int settings_set(const SettingsFile &file, const char *key, const char *value)
{
    if (*key == '\0' || strpbrk(key, "=\n")) {
        errno = EINVAL;
        return -1;
    }
    const Descriptor lock(lock_store(file));
    HeapText old, line, changed;
    if (lock.fd < 0 || !read_store(file, &old) || !make_line(key, value, &line) ||
        !change_store(old.view(), key, line.view(), &changed))
        return -1;
    return replace_store(file, changed.view());
}

int settings_copy(const SettingsFile &from, const SettingsFile &to)
{
    const Descriptor lock(lock_store(to));
    HeapText store;
    if (lock.fd < 0 || !read_store(from, &store))
        return -1;
    return replace_store(to, store.view());
}
