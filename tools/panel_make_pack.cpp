/* panel-make-pack: the language pack of a translation, or of the English texts of the template itself. */
#include "tools/output.h"
#include "tools/pack_compiler.h"
#include "tools/tool.h"

#include <cstdio>
#include <stdexcept>

static constexpr Option options[] = {
    {"--template", Values::ONE, true},
    {"--translation", Values::ONE, false},
    {"--bitmaps", Values::ONE, true},
    {"--output", Values::ONE, true},
};

static void make_pack(const Arguments &arguments, Problems &problems)
{
    /* There the daemon's code complains of texts that it is tried with; what matters is reported. */
    if (!std::freopen("/dev/null", "w", stdout))
        throw std::runtime_error("/dev/null cannot be opened");
    const std::string translation = arguments.has("--translation") ? arguments.one("--translation") : "";
    const std::optional<std::string> pack =
        compile_pack(arguments.one("--template"), translation, arguments.one("--bitmaps"), problems);
    if (pack)
        write_file(arguments.one("--output"), *pack);
}

int main(int argc, char **argv)
{
    const char *const usage = "panel-make-pack --template FILE.pot [--translation FILE.po] --bitmaps FOLDER "
                              "--output FILE";
    return run_tool({usage, options, make_pack}, argc, argv);
}
