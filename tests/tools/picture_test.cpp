#include "tests/tools/temp_folder.h"
#include "tools/bitmap_compiler.h"
#include "tools/picture.h"
#include "tools/problems.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace std::string_literals;

TEST(Pictures, BitmapFilesHoldBigEndianSizesAndWholeByteRows)
{
    const TempFolder folder;
    std::ostringstream out;
    Problems problems(out);
    folder.write("art/icon_Two.txt", "########\n#......#\n");
    folder.write("art/nine.txt", "#........\n........#"); // no line end after the last row
    folder.write("art/notes.md", "not a picture");

    compile_bitmaps(std::vector{(folder / "art").string()}, folder / "out", problems);

    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(read_file(folder / "out/ICON_TWO"), "\0\x08\0\x02\xFF\x81"s);
    EXPECT_EQ(read_file(folder / "out/NINE"), "\0\x09\0\x02\x80\x00\x00\x80"s);
    EXPECT_FALSE(std::filesystem::exists(folder / "out/NOTES"));
}

TEST(Pictures, FaultyDrawingsAreRefusedWithTheirLine)
{
    struct Case {
        std::string drawing;
        std::string fault;
    };
    const std::string rows_64 = [] {
        std::string rows;
        for (int row = 0; row < 64; ++row)
            rows += "#\n";
        return rows;
    }();
    const Case cases[] = {
        {"", "1: the drawing is empty"},
        {"\n", "1: the line is empty"},
        {"##\n#\n", "2: a line of 1 pixels, the first has 2"},
        {"##\n##\n\n", "3: the line is empty"},
        {"##\r\n##\r\n", "1: only '#' and '.' draw, not character number 3"},
        {"..\n.x\n", "2: only '#' and '.' draw, not character number 2"},
        {std::string(129, '#') + '\n', "1: larger than the screen, 128 x 64 pixels"},
        {rows_64 + "#\n", "65: larger than the screen, 128 x 64 pixels"},
    };
    for (const Case &c : cases) {
        const TempFolder folder;
        std::ostringstream out;
        Problems problems(out);
        const std::filesystem::path file = folder.write("art/a.txt", c.drawing);
        folder.write("out/FORMER", "kept");

        compile_bitmaps(std::vector{(folder / "art").string()}, folder / "out", problems);

        EXPECT_EQ(out.str(), file.string() + ':' + c.fault + '\n');
        EXPECT_TRUE(problems.failed());
        EXPECT_EQ(read_file(folder / "out/FORMER"), "kept");
        EXPECT_FALSE(std::filesystem::exists(folder / "out.new"));
    }
}

TEST(Pictures, ANewFolderHoldsNothingOfTheFormerOne)
{
    const TempFolder folder;
    std::ostringstream out;
    Problems problems(out);
    folder.write("art/a.txt", "#\n");
    folder.write("out/FORMER", "");
    folder.write("out.new/HALF_WRITTEN", "");

    compile_bitmaps(std::vector{(folder / "art").string()}, (folder / "out").string() + '/', problems);

    EXPECT_TRUE(std::filesystem::exists(folder / "out/A"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/FORMER"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/HALF_WRITTEN"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out.old"));
}

TEST(Pictures, TwoOfOneNameAreRefused)
{
    const TempFolder folder;
    std::ostringstream out;
    Problems problems(out);
    folder.write("one/icon.txt", "#\n");
    folder.write("two/ICON.txt", "#\n");

    compile_bitmaps(std::vector{(folder / "one").string(), (folder / "two").string()}, folder / "out", problems);

    EXPECT_EQ(out.str(), (folder / "two/ICON.txt").string() + ": a second picture of the name ICON\n");
}
