#include "tools/bitmap_compiler.h"

#include "tools/output.h"
#include "tools/picture.h"
#include "tools/problems.h"

#include <set>

void compile_bitmaps(std::span<const std::string> folders, const std::string &output, Problems &problems)
{
    OutputFolder bitmaps(output);
    std::set<std::string> names;
    for (const std::string &folder : folders) {
        for (const std::filesystem::path &file : text_art_files(folder)) {
            const std::string name = bitmap_name(file);
            if (!names.insert(name).second)
                problems.error(file, "a second picture of the name " + name);
            if (const std::optional<Picture> picture = read_text_art(file, problems))
                bitmaps.write(name, bitmap_file(*picture));
        }
    }
    if (!problems.failed())
        bitmaps.replace();
}
