/* The list of processes, in which the companion daemons are looked for. */
#include "core/command.h"
#include "core/daemons.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

/* What is left of `output` when each line of it, or 1023 bytes of a longer one, ends at its first NUL. */
static std::string captured(std::string_view output)
{
    std::string text;
    while (!output.empty()) {
        const size_t length = std::min({output.find('\n'), output.size() - 1, size_t{1022}}) + 1;
        text += std::string(output.substr(0, length)).c_str();
        output.remove_prefix(length);
    }
    return text;
}

void fuzz(Input &in)
{
    FuzzRouter router;
    router.output = in.rest();
    char *text = nullptr;
    const int size = myPipe("ps", &text);
    require(size == static_cast<int>(strlen(text)) + 1, "the size of an output is that of its text");
    require(text == captured(router.output), "an output is captured whole");
    free(text);
    check_daemons();
}
