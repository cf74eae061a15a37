#include "fuzz/fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

static constexpr char TEXT_END = '\xFE';

int Input::number(int least, int most)
{
    const int64_t count = int64_t{most} - least + 1;
    int64_t value = 0;
    for (int bytes = count > 256 ? 4 : 1; bytes > 0 && !rest_.empty(); bytes--) {
        value = value << 8 | static_cast<uint8_t>(rest_[0]);
        rest_.remove_prefix(1);
    }
    return static_cast<int>(least + value % count);
}

std::string Input::text()
{
    const std::string text(rest_.substr(0, rest_.find(TEXT_END)));
    rest_.remove_prefix(std::min(text.size() + 1, rest_.size()));
    return text;
}

std::string Input::rest()
{
    return std::string(std::exchange(rest_, {}));
}

void require(bool holds, const char *what)
{
    if (holds)
        return;
    fprintf(stderr, "does not hold: %s\n", what);
    abort();
}

std::vector<char> exact(const std::string &text)
{
    return {text.c_str(), text.c_str() + strlen(text.c_str()) + 1};
}

MemoryFile::MemoryFile(std::string_view bytes) : fd_(memfd_create("fuzz", MFD_CLOEXEC))
{
    require(pwrite(fd_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()), "memory for a file");
}

MemoryFile::~MemoryFile()
{
    close(fd_);
}

std::string MemoryFile::path() const
{
    return "/proc/self/fd/" + std::to_string(fd_);
}

struct ScratchFolder {
    std::string path = "/dev/shm/fuzz-XXXXXX";

    ScratchFolder() { require(mkdtemp(path.data()) != nullptr, "a folder in memory"); }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

const std::string &scratch_folder()
{
    static const ScratchFolder folder;
    return folder.path;
}

void write_scratch(const std::string &path, std::string_view bytes)
{
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    require(write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "room in the folder in memory");
    close(fd);
}

/* What the code under test prints is nobody's. */
[[maybe_unused]] static FILE *const silence = freopen("/dev/null", "w", stdout);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Input in(data, size);
    fuzz(in);
    return 0;
}
