#include "core/command.h"

#include "platform/router.h"

#include <cstdlib>
#include <cstring>

/* Appends `piece` to the heap text `*out` of `length` bytes. On failure the text is freed. */
static bool append(char **out, size_t length, const char *piece)
{
    const size_t size = strlen(piece) + 1;
    char *grown = static_cast<char *>(realloc(*out, length + size));
    if (!grown) {
        free(*out);
        return false;
    }
    memcpy(grown + length, piece, size);
    *out = grown;
    return true;
}

int myPipe(const char *command, char **out)
{
    *out = static_cast<char *>(calloc(1, 1));
    if (!*out)
        return -1;
    FILE *stream = router_popen(command);
    if (!stream) {
        free(*out);
        return -1;
    }
    char piece[1024];
    size_t length = 0;
    bool kept = true;
    while (kept && fgets(piece, sizeof piece, stream)) {
        kept = append(out, length, piece);
        length += strlen(piece);
    }
    router_pclose(stream);
    return kept ? static_cast<int>(length) + 1 : -1;
}

CommandOutput::CommandOutput(const char *command)
{
    if (myPipe(command, &text_) < 0)
        text_ = nullptr;
}

CommandOutput::~CommandOutput()
{
    free(text_);
}
