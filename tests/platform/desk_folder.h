/* The root folder of all tests of the desk platform: made at the first use, removed at the end. Its name is longer than
 * a socket's may be, and needs quoting in the shell. */
#pragma once

#include "tests/tools/temp_folder.h"

#include <string_view>

inline const std::filesystem::path &desk_folder()
{
    static const TempFolder top;
    static const std::filesystem::path root = [] {
        const std::filesystem::path folder = top / ("it's a \"root\" " + std::string(120, 'x'));
        for (const char *name : {"etc", "proc", "run", "sbin", "tmp/lcd", "var"})
            std::filesystem::create_directories(folder / name);
        setenv("PANEL_ROOT", folder.c_str(), 1);
        return folder;
    }();
    return root;
}

inline void write_file(const std::filesystem::path &path, std::string_view bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}
