/* The walk of a scenario over the daemon's code and a real platform, and what it is played on: a router root in a
 * folder of its own. */
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

/* The root's files that the walk or the daemon changes, by path. */
using World = std::map<std::string, std::string>;

class WalkRoot
{
public:
    WalkRoot();
    ~WalkRoot();
    WalkRoot(const WalkRoot &) = delete;
    WalkRoot &operator=(const WalkRoot &) = delete;

    const std::filesystem::path &path() const { return path_; }
    World read_world() const;
    /* Makes the files those of `world` again. */
    void restore(const World &world) const;

    /* Plays a line that changes the world around the daemon, or announces input. False for any other line. */
    bool play_world_line(const Words &words) const;

private:
    const std::filesystem::path path_;
};

/* Plays a line that the daemon acts on: start, goto, pass. */
void play_daemon_line(const Words &words);

/* One pass of the main loop, its sleep included, behind one tick. */
void play_passes(unsigned count);
