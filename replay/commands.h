/* The commands of scenario scripts. */
#pragma once

#include <span>
#include <string>

enum PlayResult {
    PLAY_DONE = 0,
    PLAY_FAILED = 1, // an expectation was not met; the play goes on
    PLAY_BAD = 2,    // it cannot be played: the play stops there
};

/* What came of a line. */
struct Outcome {
    PlayResult result = PLAY_DONE;
    std::string text; // PLAY_FAILED: what was found instead; PLAY_BAD: the reason
};

using Words = std::span<const std::string>;

/* Plays one command, given by its words: at least its name. */
Outcome play_command(Words words);
