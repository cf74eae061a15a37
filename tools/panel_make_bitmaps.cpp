/* panel-make-bitmaps: the folder of bitmap files of the pictures drawn as text art. */
#include "tools/bitmap_compiler.h"
#include "tools/tool.h"

static constexpr Option options[] = {
    {"--pictures", Values::MANY, true},
    {"--output", Values::ONE, true},
};

static void make_bitmaps(const Arguments &arguments, Problems &problems)
{
    compile_bitmaps(arguments.all("--pictures"), arguments.one("--output"), problems);
}

int main(int argc, char **argv)
{
    return run_tool({"panel-make-bitmaps --pictures FOLDER... --output FOLDER", options, make_bitmaps}, argc, argv);
}
