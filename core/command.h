/* The output of shell commands. */
#pragma once

/* Runs `command` and stores all of its standard output in `*out`, a heap text that the caller frees. The size of that
 * text, its NUL included; -1 when the command cannot be started or memory runs out: `*out` is not usable then. */
int myPipe(const char *command, char **out);

/* The captured output of one command, freed with its owner. */
class CommandOutput
{
public:
    explicit CommandOutput(const char *command);
    ~CommandOutput();
    CommandOutput(const CommandOutput &) = delete;
    CommandOutput &operator=(const CommandOutput &) = delete;

    /* The text; null when the command could not be captured. */
    const char *text() const { return text_; }

private:
    char *text_ = nullptr;
};
