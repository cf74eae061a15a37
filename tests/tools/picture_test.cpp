#include "tests/tools/temp_folder.h"
#include "tools/bitmap_compiler.h"
#include "tools/picture.h"
#include "tools/problems.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace std::string_literals;

/* Makes the drawings in these folders of `folder` its bitmap files in out/; what was said. */
static std::string compile(const TempFolder &folder, const std::vector<std::string> &names)
{
    std::ostringstream out;
    Problems problems(out);
    std::vector<std::string> paths;
    for (const std::string &name : names)
        paths.push_back(folder / name);
    compile_bitmaps(paths, folder / "out/", problems);
    return out.str();
}

TEST(Pictures, AFolderOfBitmapFilesReplacesTheFormerOne)
{
    const TempFolder folder;
    folder.write("art/icon_Two.txt", "########\n#......#\n");
    folder.write("art/nine.txt", "#........\n........#"); // no line end after the last row
    folder.write("art/notes.md", "not a picture");
    folder.write("out/FORMER", "");
    folder.write("out.new/HALF_WRITTEN", "");

    EXPECT_EQ(compile(folder, {"art"}), "");

    EXPECT_EQ(read_file(folder / "out/ICON_TWO"), "\0\x08\0\x02\xFF\x81"s);
    EXPECT_EQ(read_file(folder / "out/NINE"), "\0\x09\0\x02\x80\x00\x00\x80"s);
    for (const char *gone : {"out/NOTES", "out/FORMER", "out/HALF_WRITTEN", "out.old", "out.new"})
        EXPECT_FALSE(std::filesystem::exists(folder / gone)) << gone;
}

TEST(Pictures, FaultyDrawingsAreRefusedWithTheirLine)
{
    std::string rows_64;
    for (int row = 0; row < 64; ++row)
        rows_64 += "#\n";
    const std::pair<std::string, std::string> cases[] = {
        {"", "1: the drawing is empty"},
        {"\n", "1: the line is empty"},
        {"##\n#\n", "2: a line of 1 pixels, the first has 2"},
        {"##\n##\n\n", "3: the line is empty"},
        {"##\r\n##\r\n", "1: only '#' and '.' draw, not character number 3"},
        {"..\n.x\n", "2: only '#' and '.' draw, not character number 2"},
        {std::string(129, '#') + '\n', "1: larger than the screen, 128 x 64 pixels"},
        {rows_64 + "#\n", "65: larger than the screen, 128 x 64 pixels"},
    };
    const TempFolder folder;
    folder.write("out/FORMER", "kept");
    for (const auto &[drawing, fault] : cases) {
        const std::filesystem::path file = folder.write("art/a.txt", drawing);
        EXPECT_EQ(compile(folder, {"art"}), file.string() + ':' + fault + '\n');
        EXPECT_EQ(read_file(folder / "out/FORMER"), "kept");
        EXPECT_FALSE(std::filesystem::exists(folder / "out.new"));
    }
    folder.write("one/icon.txt", "#\n");
    const std::filesystem::path second = folder.write("two/ICON.txt", "#\n");
    EXPECT_EQ(compile(folder, {"one", "two"}), second.string() + ": a second picture of the name ICON\n");
}
