/* panel-replay: plays a scenario script and prints what the daemon did. */
#include "replay/player.h"
#include "replay/router_files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <getopt.h>
#include <iostream>

struct Options {
    const char *root = nullptr;
    const char *script = nullptr; // null: standard input
    bool lines = false;
};

/* False when the arguments are no good usage; what getopt finds wrong, it has said. */
static bool read_options(int argc, char **argv, Options &options)
{
    static const option long_options[] = {
        {"root", required_argument, nullptr, 'r'},
        {"lines", no_argument, nullptr, 'l'},
        {},
    };
    for (int letter; (letter = getopt_long(argc, argv, "", long_options, nullptr)) != -1;) {
        if (letter == 'r')
            options.root = optarg;
        else if (letter == 'l')
            options.lines = true;
        else
            return false;
    }
    if (argc - optind > 1)
        return false;
    options.script = argv[optind];
    return options.root && (!options.script || std::string_view(options.script).ends_with(".scenario"));
}

static int fail(const char *what)
{
    fprintf(stderr, "panel-replay: %s: %s\n", what, strerror(errno));
    return PLAY_BAD;
}

int main(int argc, char **argv)
{
    Options options;
    if (!read_options(argc, argv, options)) {
        fputs("usage: panel-replay --root DIR [--lines] [SCRIPT.scenario]\n", stderr);
        return PLAY_BAD;
    }
    if (!open_router_root(options.root))
        return fail(options.root);
    std::ifstream file;
    if (options.script) {
        file.open(options.script);
        if (!file)
            return fail(options.script);
    }
    /* Only with a buffer of its own does the stream tell a failure to read from the end of the input. */
    std::ios::sync_with_stdio(false);
    /* The trace of a run that dies is as long as the run. */
    setvbuf(stdout, nullptr, _IOLBF, 0);
    const int result = options.script ? play_script(file, options.script, options.lines)
                                      : play_script(std::cin, "standard input", options.lines);
    if (fflush(stdout) != 0 || ferror(stdout))
        return fail("standard output");
    return result;
}
