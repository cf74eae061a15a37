/* Scenario scripts, on a root folder in memory. What may write anywhere or last for ever is left out: pictures, and
 * more passes than a few. */
#include "core/main_loop.h"
#include "fuzz/fuzz.h"
#include "platform/replay/replay.h"
#include "replay/commands.h"
#include "replay/router_files.h"
#include "replay/script.h"

#include <sstream>

static constexpr uint64_t MOST_PASSES = 30;
static constexpr int MOST_LINES = 40;

static bool is_playable(const std::vector<std::string> &words)
{
    if (words.empty() || words[0] == "shot")
        return false;
    return words[0] != "pass" || words.size() != 2 || parse_number(words[1], MOST_PASSES);
}

void fuzz(Input &in)
{
    static const bool started = [] {
        const bool opened = open_router_root(scratch_folder());
        panel_start();
        return opened;
    }();
    require(started, "the folder is a root");
    remove_router_path("/tmp");
    remove_router_path("/var");
    replay = ReplayRouter();
    std::istringstream script(in.rest());
    int lines = 0;
    for (std::string text; lines < MOST_LINES && std::getline(script, text); lines++) {
        const ScriptLine line = split_line(text);
        if (!line.error.empty() || !is_playable(line.words))
            continue;
        const Outcome outcome = play_command(line.words);
        require((outcome.result == PLAY_DONE) == outcome.text.empty() || outcome.result == PLAY_FAILED,
                "what cannot be played is given a reason");
        require(outcome.result >= PLAY_DONE && outcome.result <= PLAY_BAD, "an outcome is one of three");
    }
}
