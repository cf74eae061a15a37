#include "tools/output.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

static fs::path beside(const fs::path &path, const char *suffix)
{
    fs::path result = path;
    result += suffix;
    return result;
}

static void write_in_place(const fs::path &file, std::string_view content)
{
    std::ofstream out(file, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out)
        throw std::system_error(errno, std::generic_category(), "cannot write " + file.string());
}

void write_file(const fs::path &file, std::string_view content)
{
    if (file.has_parent_path())
        fs::create_directories(file.parent_path());
    const fs::path fresh = beside(file, ".new");
    try {
        write_in_place(fresh, content);
        fs::rename(fresh, file);
    } catch (...) {
        std::error_code ignored;
        fs::remove(fresh, ignored);
        throw;
    }
}

OutputFolder::OutputFolder(const fs::path &folder)
    : folder_(folder.has_filename() ? folder : folder.parent_path()), fresh_(beside(folder_, ".new"))
{
    fs::remove_all(fresh_);
    fs::create_directories(fresh_);
}

OutputFolder::~OutputFolder()
{
    std::error_code ignored;
    fs::remove_all(fresh_, ignored);
}

void OutputFolder::write(const std::string &name, std::string_view content)
{
    write_in_place(fresh_ / name, content);
}

void OutputFolder::replace()
{
    const fs::path old = beside(folder_, ".old");
    fs::remove_all(old);
    if (fs::exists(folder_))
        fs::rename(folder_, old);
    fs::rename(fresh_, folder_);
    fs::remove_all(old);
}
