#include "replay/player.h"

#include "core/screen_table.h"
#include "core/timer.h"
#include "platform/replay/replay.h"
#include "replay/script.h"

#include <cstdio>
#include <istream>

static Outcome play_line(const std::string &text, unsigned number, bool lines)
{
    const ScriptLine line = split_line(text);
    if (!line.error.empty())
        return {PLAY_BAD, line.error};
    if (line.words.empty())
        return {};
    if (lines)
        replay_record("line", std::to_string(number).c_str());
    return play_command(line.words);
}

/* Says on standard error what went wrong at a place, behind all that the trace holds by now. */
static void complain(const std::string &place, const std::string &what)
{
    fflush(stdout);
    fprintf(stderr, "%s: %s\n", place.c_str(), what.c_str());
}

PlayResult play_script(std::istream &script, const std::string &name, bool lines)
{
    replay.ticks = [] { return tick_count.load(); };
    screen_observer = [](const char *screen) { replay_record("screen", screen); };
    PlayResult result = PLAY_DONE;
    std::string line;
    for (unsigned number = 1; std::getline(script, line); number++) {
        if (line.ends_with('\r'))
            line.pop_back();
        const Outcome outcome = play_line(line, number, lines);
        if (outcome.result == PLAY_DONE)
            continue;
        result = outcome.result;
        const std::string place = name + ':' + std::to_string(number);
        complain(place, result == PLAY_FAILED ? line + ": found " + outcome.text : outcome.text);
        if (result == PLAY_BAD)
            return result;
    }
    if (script.bad()) {
        complain(name, "cannot be read");
        return PLAY_BAD;
    }
    return result;
}
