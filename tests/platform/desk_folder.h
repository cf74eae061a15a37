/* The root folder of all tests of the desk platform: made at the first use, removed at the end. Its name is longer than
 * a socket's may be, and needs quoting in the shell. */
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

struct DeskFolder {
    char name[32] = "/tmp/panel-desk-XXXXXX";
    const std::filesystem::path top = mkdtemp(name);
    const std::filesystem::path root = top / ("it's a \"root\" " + std::string(120, 'x'));

    DeskFolder()
    {
        for (const char *folder : {"etc", "run", "sbin", "tmp"})
            std::filesystem::create_directories(root / folder);
        setenv("PANEL_ROOT", root.c_str(), 1);
    }
    ~DeskFolder() { std::filesystem::remove_all(top); }
};

inline const std::filesystem::path &desk_folder()
{
    static const DeskFolder folder;
    return folder.root;
}

inline void write_file(const std::filesystem::path &path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string read_file(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
