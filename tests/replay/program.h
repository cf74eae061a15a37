/* Programs run by the tests of the scenario player. */
#pragma once

#include "tests/support/test_root.h"
#include "tests/tools/temp_folder.h"

#include <sys/wait.h>

struct ProgramRun {
    int status; // -1: ended by a signal
    std::string out, err;
};

/* Runs a shell command; what it prints goes through files beside the folders of `root`. */
inline ProgramRun run(const TestRoot &root, const std::string &command)
{
    const std::filesystem::path out = root.path("/out"), err = root.path("/err");
    const int status = std::system(("(" + command + ") > " + out.string() + " 2> " + err.string()).c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(out), read_file(err)};
}

/* Plays `script` from standard input on the router below `root`. */
inline ProgramRun play(const TestRoot &root, std::string_view script, const std::string &options = "")
{
    root.write("/script", script);
    return run(root, PANEL_REPLAY " --root " + root.path("/").string() + " " + options + " < " +
                         root.path("/script").string());
}
