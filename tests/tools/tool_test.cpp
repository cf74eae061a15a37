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

TEST(Programs, BadInputIsNamedAndLeavesTheOutputAlone)
{
    const TempFolder folder;
    const std::string output = " --output " + folder.write("out", "former").string();
    const std::string unfinished = folder.write("panel.pot", "msgid \"unfinished\n").string();
    const std::string pack = "panel-make-pack --template ";
    const std::string original = SOURCE_DIR "/assets/lang/panel.pot";
    const std::pair<std::string, std::string> cases[] = {
        {pack + unfinished + " --bitmaps .", unfinished + ":1: "},
        {pack + "no-such.pot --bitmaps .", "no-such"},
        {pack + original + " --bitmaps . --translation no-such/de.po", "no-such"},
        {pack + original + " --bitmaps no-such", "no-such"},
        {"panel-make-bitmaps --pictures no-such", "no-such"},
    };
    for (const auto &[line, named] : cases) {
        EXPECT_EQ(run(BUILT_BIN "/" + line + output, folder / "messages"), 1) << line;
        const std::string messages = read_file(folder / "messages");
        EXPECT_NE(messages.find(named), std::string::npos) << line << '\n' << messages;
        EXPECT_TRUE(messages.find('\n') == messages.size() - 1 || named != "no-such") << messages;
        EXPECT_EQ(read_file(folder / "out"), "former") << line;
    }
}
