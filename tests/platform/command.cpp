#include "platform/desk/command.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>

TEST(RootCommand, PutsTheRootBeforePaths)
{
    const std::pair<const char *, const char *> cases[] = {
        {"", ""},
        {"rc wireless restart&", "rc wireless restart&"},
        {"/bin/echo x >> /tmp/lcd/log", "'/r'/bin/echo x >> '/r'/tmp/lcd/log"},
        {"a >/x 2>>/y </z", "a >'/r'/x 2>>'/r'/y <'/r'/z"},
        {"/a;/b|/c&&/d &", "'/r'/a;'/r'/b|'/r'/c&&'/r'/d &"},
        {"(/a $(/b) `/c`)\n\t/d", "('/r'/a $('/r'/b) `'/r'/c`)\n\t'/r'/d"},
        {"reg 0x4048=0xfff8000 a/b ./c k=/v", "reg 0x4048=0xfff8000 a/b ./c k=/v"},
        {"/dev/null /dev/nullx /dev/null/x >/dev/null;", "/dev/null '/r'/dev/nullx '/r'/dev/null/x >/dev/null;"},
        {"ls / //x", "ls '/r'/ '/r'//x"},
        {"\"/a b\" '/c' \"/dev/null\"", "'/r'\"/a b\" '/r''/c' \"/dev/null\""},
        {"echo 'x /y' \"it's /z\" /w", "echo 'x /y' \"it's /z\" '/r'/w"},
    };
    for (const auto &[command, rooted] : cases) {
        char out[128];
        EXPECT_TRUE(root_command(out, "/r", command));
        EXPECT_STREQ(out, rooted);
    }
}

TEST(RootCommand, QuotesTheRootAndNeedsRoomForAll)
{
    const std::string rooted = R"('/it'\''s "$a"'/x)";
    std::string out(rooted.size() + 1, '?');
    EXPECT_TRUE(root_command(out, "/it's \"$a\"", "/x"));
    EXPECT_EQ(out.c_str(), rooted);
    errno = 0;
    EXPECT_FALSE(root_command(std::span(out).first(rooted.size()), "/it's \"$a\"", "/x"));
    EXPECT_EQ(errno, E2BIG);
}
