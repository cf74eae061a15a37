/* A router root of a test's own: a folder below the temporary folder, removed with its owner. */
#pragma once

#include "platform/replay/replay.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

class TestRoot
{
public:
    TestRoot()
    {
        char name[] = "/tmp/panel-test-XXXXXX";
        dir_ = mkdtemp(name);
        std::filesystem::create_directories(dir_ / "tmp/lcd/network_status");
        replay = {};
        replay.trace = false;
        replay_open_root(dir_);
    }
    ~TestRoot() { std::filesystem::remove_all(dir_); }
    TestRoot(const TestRoot &) = delete;
    TestRoot &operator=(const TestRoot &) = delete;

    /* The built packs, glyphs and pictures, below this root. */
    void link_assets() const
    {
        std::filesystem::create_directories(dir_ / "sbin");
        std::filesystem::create_directory_symlink(BUILT_ROOT "/sbin/lcd_ml", dir_ / "sbin/lcd_ml");
    }

    /* Where a router path lies on this machine. */
    std::filesystem::path path(std::string_view router_path) const { return dir_ / router_path.substr(1); }

    void write(std::string_view router_path, std::string_view bytes) const
    {
        std::filesystem::create_directories(path(router_path).parent_path());
        std::ofstream(path(router_path), std::ios::binary) << bytes;
    }

private:
    std::filesystem::path dir_;
};

/* What `run` prints on standard output. */
template <typename Run> std::string printed(Run run)
{
    testing::internal::CaptureStdout();
    run();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}
