/* A temporary folder that stands for the router's root, removed with its owner. */
#pragma once

#include <filesystem>
#include <string_view>

class RouterFolder
{
public:
    /* Holds the built English pack, the glyphs below U+0100 and the folders that the daemon writes to. Ends the program
     * when it cannot be made. */
    RouterFolder();
    ~RouterFolder();
    RouterFolder(const RouterFolder &) = delete;
    RouterFolder &operator=(const RouterFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }

    /* Writes a file of the router, making its folders. */
    void write(std::string_view router_path, std::string_view bytes) const;

private:
    std::filesystem::path path_;
};
