/* Owners of what the router lends: an open file, a value of the settings store. */
#pragma once

#include <cstddef>
#include <fcntl.h>
#include <span>
#include <sys/types.h>

/* A file of the router, closed with its owner. */
class File
{
public:
    /* Opens `path` as open(2) with `flags`. */
    explicit File(const char *path, int flags = O_RDONLY);
    ~File();
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    /* Whether it could be opened. */
    explicit operator bool() const { return fd_ >= 0; }

    /* One read(2), taken up again after an interruption. Bytes read, 0 at the end, -1 on failure. */
    ssize_t read(void *buffer, size_t size) const;

    /* One read, which shows a small file as it is at one moment; of two, the second may show what a writer has put
     * there since. Bytes read; a failure counts as the end. */
    size_t read_once(void *buffer, size_t size) const;

    /* Reads until `size` bytes are there or the file ends. Bytes read; a failure counts as the end. */
    size_t read_full(void *buffer, size_t size) const;

    /* Whether it is an ordinary file of one name: writing to it reaches neither another file nor another program. */
    bool is_plain() const;

    /* As read_full, for writing. True when all was written. */
    bool write_full(const void *buffer, size_t size) const;

private:
    int fd_;
};

/* The lines of a file as fgets gives them one after the other; a line longer than the buffer goes on as the next one.
 * Files of lines are small: one that does not end is left after its first 64 kB. */
class LineReader
{
public:
    /* cppcheck-suppress uninitMemberVar ; the buffer is filled before it is read */
    explicit LineReader(const char *path) : file_(path) {}

    /* Reads the next line into `line`, its newline kept, a NUL behind it. False at the end of the file. */
    bool next(std::span<char> line);

private:
    bool fill();

    File file_;
    char buffer_[1024];
    size_t start_ = 0, end_ = 0; // what of the buffer is still to be read
    bool ended_ = false;         // the end of the file has been seen
    int fills_left_ = 64;
};

/* One value read from the settings store, freed with its owner. */
class Setting
{
public:
    explicit Setting(const char *key);
    ~Setting();
    Setting(const Setting &) = delete;
    Setting &operator=(const Setting &) = delete;

    /* Whether it could be read; false only when memory has run out. */
    explicit operator bool() const { return text_ != nullptr; }

    /* The value; "" when the key is missing. Never null. */
    const char *text() const { return text_ ? text_ : ""; }

private:
    char *text_;
};

/* Reads the first line of `path` as fgets does: at most line.size() - 1 bytes, the newline kept, a NUL behind it; ""
 * when nothing can be read. False when the file cannot be opened. */
bool read_first_line(const char *path, std::span<char> line);
