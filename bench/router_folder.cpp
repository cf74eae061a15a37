#include "bench/router_folder.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

/* Copies, no links: a link on the way would make every file dearer to open. */
static void copy_assets(const fs::path &root)
{
    const fs::path built = BUILT_ROOT "/sbin/lcd_ml";
    const fs::path assets = root / "sbin/lcd_ml";
    fs::create_directories(assets / "_auto_lang_");
    fs::create_directories(assets / "_auto_bitmap_");
    fs::copy(built / "_auto_lang_/_auto_language_en", assets / "_auto_lang_");
    for (const fs::directory_entry &file : fs::directory_iterator(built / "_auto_bitmap_")) {
        const std::string name = file.path().filename();
        if (name.starts_with("U_00") || name.starts_with("ICON"))
            fs::copy(file.path(), assets / "_auto_bitmap_");
    }
}

/* In memory where that can be had, as the router's /tmp: on a disk a frame's lock file costs more than the frame. */
static fs::path make_folder()
{
    for (std::string name : {"/dev/shm/panel-bench-XXXXXX", "/tmp/panel-bench-XXXXXX"})
        if (mkdtemp(name.data()))
            return name;
    throw std::runtime_error("no folder in /dev/shm or /tmp");
}

RouterFolder::RouterFolder()
{
    try {
        path_ = make_folder();
        for (const char *folder : {"tmp/lcd", "run"})
            fs::create_directories(path_ / folder);
        copy_assets(path_);
    } catch (const std::exception &error) {
        fprintf(stderr, "cannot make a router's root (are the assets built?): %s\n", error.what());
        fs::remove_all(path_);
        exit(2);
    }
}

RouterFolder::~RouterFolder()
{
    fs::remove_all(path_);
}

void RouterFolder::write(std::string_view router_path, std::string_view bytes) const
{
    const fs::path file = path_ / router_path.substr(1);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}
