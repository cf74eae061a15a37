/* What the fuzz targets share: an input taken apart, what must hold, and places for the bytes to be read from. A target
 * is one file that defines `fuzz`; its inputs are in corpus/NAME. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/* The bytes of one input: numbers and texts are taken from its front. An input that has run out yields the least number
 * and empty texts. */
class Input
{
public:
    Input(const uint8_t *data, size_t size) : rest_(reinterpret_cast<const char *>(data), size) {}

    bool empty() const { return rest_.empty(); }

    /* A number from `least` to `most`: a byte of the input, four when a byte does not tell so many apart. */
    int number(int least, int most);

    /* The bytes up to the next 0xFE, which is dropped. */
    std::string text();

    /* All bytes that are left. */
    std::string rest();

private:
    std::string_view rest_;
};

/* Reads the bytes of `in` and checks what must hold whatever they are. */
void fuzz(Input &in);

/* Ends the program, saying `what` does not hold. */
void require(bool holds, const char *what);

/* `text` up to its first NUL, which is kept, in a block of just that size: a sanitizer sees any byte read behind it. */
std::vector<char> exact(const std::string &text);

/* A file that holds `bytes` for as long as this lives, without a name in any folder. */
class MemoryFile
{
public:
    explicit MemoryFile(std::string_view bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    std::string path() const;

private:
    int fd_;
};

/* A folder of this process in memory, removed when it ends. */
const std::string &scratch_folder();

/* Makes the file `path` hold `bytes`. */
void write_scratch(const std::string &path, std::string_view bytes);
