/* panel-make-glyphs: the folder of the glyph files of the three fonts. */
#include "tools/glyph_compiler.h"
#include "tools/tool.h"

#include <iostream>

static constexpr Option options[] = {
    {"--set", Values::ONE, true},     {"--texts", Values::MANY, true},        {"--own", Values::ONE, true},
    {"--fonts", Values::ONE, true},   {"--without-wqy", Values::NONE, false}, {"--output", Values::ONE, true},
    {"--notice", Values::ONE, false},
};

static void make_glyphs(const Arguments &arguments, Problems &problems)
{
    const GlyphJob job = {
        .set = arguments.one("--set"),
        .texts = arguments.all("--texts"),
        .own = arguments.one("--own"),
        .fonts = arguments.one("--fonts"),
        .with_chinese = !arguments.has("--without-wqy"),
        .output = arguments.one("--output"),
        .notice = arguments.has("--notice") ? arguments.one("--notice") : "",
    };
    std::cout << compile_glyphs(job, problems);
}

int main(int argc, char **argv)
{
    const char *const usage = "panel-make-glyphs --set packs|base|asia|full --texts FILE.po... --own FOLDER "
                              "--fonts FOLDER [--without-wqy] --output FOLDER [--notice FILE]";
    return run_tool({usage, options, make_glyphs}, argc, argv);
}
