#include "tests/tools/temp_folder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

/* Exit code of a shell command whose messages go to `messages`. */
static int run(const std::string &command, const std::filesystem::path &messages)
{
    const int status = std::system((command + " 2>" + messages.string()).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Programs, CommandLinesThatTheOptionsDoNotAllowGetTheUsage)
{
    const char *const lines[] = {
        "panel-make-pack",
        "panel-make-pack --template a --bitmaps b --output c --verbose",
        "panel-make-pack --template a b --bitmaps c --output d",
        "panel-make-pack --template a --template a --bitmaps c --output d",
        "panel-make-bitmaps --pictures --output b",
        "panel-make-bitmaps stray --pictures a --output b",
        "panel-make-glyphs --set packs --texts a --own b --fonts c --output d --without-wqy yes",
        "panel-make-glyphs --set klingon --texts a --own b --fonts c --output d",
    };
    for (const std::string line : lines) {
        const TempFolder folder;
        EXPECT_EQ(run(BUILT_BIN "/" + line, folder / "messages"), 2) << line;
        const std::string usage = "usage: " + line.substr(0, line.find(' '));
        EXPECT_NE(read_file(folder / "messages").find(usage), std::string::npos) << line;
    }
}

TEST(Programs, BadInputEndsWithOneAndLeavesTheOutputAlone)
{
    const TempFolder folder;
    const std::filesystem::path source = folder.write("panel.pot", "msgid \"unfinished\n");
    folder.write("pack", "former");

    const int status = run(BUILT_BIN "/panel-make-pack --template " + source.string() + " --bitmaps . --output " +
                               (folder / "pack").string(),
                           folder / "messages");

    EXPECT_EQ(status, 1);
    EXPECT_EQ(read_file(folder / "pack"), "former");
    EXPECT_NE(read_file(folder / "messages").find(source.string() + ":1: "), std::string::npos);
}

TEST(Programs, InputsThatAreMissingAreNamed)
{
    const TempFolder folder;
    const std::string output = " --output " + (folder / "out").string();
    const std::string pack = "panel-make-pack --template ";
    const std::string original = SOURCE_DIR "/assets/lang/panel.pot";
    const std::string lines[] = {
        pack + "no-such.pot --bitmaps .",
        pack + original + " --bitmaps . --translation no-such/de.po",
        pack + original + " --bitmaps no-such",
        "panel-make-bitmaps --pictures no-such",
    };
    for (const std::string &line : lines) {
        EXPECT_EQ(run(BUILT_BIN "/" + line + output, folder / "messages"), 1) << line;
        const std::string messages = read_file(folder / "messages");
        EXPECT_NE(messages.find("no-such"), std::string::npos) << line;
        EXPECT_EQ(messages.find('\n'), messages.size() - 1) << messages;
        EXPECT_FALSE(std::filesystem::exists(folder / "out")) << line;
    }
}
