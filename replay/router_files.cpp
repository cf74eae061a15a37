#include "replay/router_files.h"

#include "platform/replay/replay.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

/* The root folder, without links. */
static fs::path root;

bool open_router_root(const std::string &dir)
{
    std::error_code error;
    root = fs::canonical(dir, error);
    errno = error.value();
    return !error && replay_open_root(root);
}

/* Where a router path lies: its folder without links, its last component as it stands. */
struct Place {
    fs::path path;
    std::string refusal; // why the script may not touch it; "" when it may
};

static Place find_place(const std::string &router_path)
{
    if (!router_path.starts_with('/'))
        return {{}, "the path is not absolute"};
    fs::path path = root;
    for (const fs::path &component : fs::path(router_path).relative_path()) {
        if (component == "..")
            return {{}, "the path has a .. component"};
        if (component != "." && !component.empty())
            path /= component;
    }
    if (path == root)
        return {root, ""};
    std::error_code error;
    const fs::path folder = fs::weakly_canonical(path.parent_path(), error);
    if (error)
        return {{}, error.message()};
    if (std::ranges::mismatch(root, folder).in1 != root.end())
        return {{}, "the path leads out of the root"};
    return {folder / path.filename(), ""};
}

std::string write_router_file(const std::string &path, const std::string &text)
{
    const Place place = find_place(path);
    if (!place.refusal.empty())
        return place.refusal;
    std::error_code error;
    if (fs::is_directory(fs::symlink_status(place.path, error)))
        return strerror(EISDIR);
    fs::create_directories(place.path.parent_path(), error);
    /* What stands there may be a link of either kind to a file outside: it makes room, it is not written to. */
    if (!error)
        fs::remove(place.path, error);
    if (error)
        return error.message();
    std::ofstream file(place.path, std::ios::binary);
    return (file << text).flush() ? "" : strerror(errno);
}

std::string remove_router_path(const std::string &path)
{
    const Place place = find_place(path);
    if (!place.refusal.empty())
        return place.refusal;
    if (place.path == root)
        return "the root stays";
    std::error_code error;
    fs::remove_all(place.path, error);
    /* Below a plain file there is nothing, as below a folder without the name. */
    return error && error != std::errc::not_a_directory ? error.message() : "";
}

std::string make_router_folder(const std::string &path)
{
    const Place place = find_place(path);
    if (!place.refusal.empty())
        return place.refusal;
    std::error_code error;
    fs::create_directories(place.path, error);
    return error ? error.message() : "";
}
