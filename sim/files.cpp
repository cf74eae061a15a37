#include "sim/files.h"

#include "sim/fd.h"

#include <fcntl.h>

namespace sim {

std::optional<std::string> read_file(const std::filesystem::path &path)
{
    const Fd file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        return std::nullopt;
    std::string text;
    char piece[4096];
    ssize_t size;
    while ((size = read(file.get(), piece, sizeof piece)) > 0)
        text.append(piece, static_cast<size_t>(size));
    return size == 0 ? std::optional(text) : std::nullopt;
}

void write_file(const std::filesystem::path &path, std::string_view text)
{
    const std::filesystem::path fresh = path.string() + UNFINISHED;
    {
        const Fd file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
        if (!file || write(file.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            fail(fresh.string());
    }
    std::filesystem::rename(fresh, path);
}

void remove_file(const std::filesystem::path &path)
{
    std::filesystem::remove(path);
}

} // namespace sim
