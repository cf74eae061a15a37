/* The program panel-replay: its trace, its messages and its exit status. */
#include "tests/replay/program.h"

TEST(Play, MarksTheLinesThatBegin)
{
    const TestRoot root;
    EXPECT_EQ(play(root, "# comment\n\npass 0\ngoto Menu\nnvram a \"b\n", "--lines").out,
              "@0 line 3\n@0 line 4\nlcd switch screen failed, current welcome, switch to Menu\n");
}

TEST(Play, GoesOnAfterAFailedExpectation)
{
    const TestRoot root;
    const ProgramRun played = play(root, R"(nvram key "a\tb"
expect nvram key a
expect nvram none ""
  expect screen "menu"
goto menu
expect dark 0 50
expect lit 0 49
expect screen menu
)");
    EXPECT_EQ(played.status, 1);
    EXPECT_EQ(played.err, "standard input:2: expect nvram key a: found \"a\\tb\"\n"
                          "standard input:4:   expect screen \"menu\": found \"welcome\"\n"
                          "standard input:6: expect dark 0 50: found lit\n"
                          "standard input:7: expect lit 0 49: found dark\n");
}

TEST(Play, StopsAtABadLine)
{
    const std::pair<const char *, const char *> bad_lines[] = {
        {"foo", "unknown word \"foo\""},
        {"expect frame", "unknown word \"frame\""},
        {"expect lit 1", "too few words behind \"lit\""},
        {"key up down", "too many words behind \"key\""},
        {"nvram a \"\\x00\"", "a NUL byte may stand only in the text of a file or an output"},
        {"pass -1", "\"-1\" is not a number from 0 to 4294967295"},
        {"expect lit 128 0", "\"128\" is not a number from 0 to 127"},
        {"expect dark 0 64", "\"64\" is not a number from 0 to 63"},
        {"expect lit 0 0", "there is no frame yet"},
        {"art", "there is no frame yet"},
        {"shot /tmp/panel-test.png", "there is no frame yet"},
        {"interface abcdefghijklmnop 10.0.0.2 255.0.0.0 00:1f:33:8a:5f:2a 1500",
         "an interface's name has 1 to 15 bytes"},
        {"interface eth0 10.0.0 255.0.0.0 00:1f:33:8a:5f:2a 1500", "a malformed address"},
        {"interface eth0 10.0.0.2 255.0.0.0 00:1f:33:8a:5f:+a 1500", "a malformed address"},
        {"file tmp/a b", "the path is not absolute"},
        {"rm /tmp/..", "the path has a .. component"},
        {"rm //./", "the root stays"},
        {"file /tmp b", "Is a directory"},
        {"mkdir /script", "Not a directory"},
    };
    const TestRoot root;
    for (const auto &[line, reason] : bad_lines) {
        const ProgramRun played = play(root, std::string("goto Menu\n") + line + "\ngoto Menu\n");
        EXPECT_EQ(played.status, 2) << line;
        EXPECT_EQ(played.out, "lcd switch screen failed, current welcome, switch to Menu\n") << line;
        EXPECT_EQ(played.err, std::string("standard input:2: ") + reason + '\n') << line;
    }
}

TEST(Play, RefusesBadUsage)
{
    const TestRoot root;
    root.write("/a.scenario", "goto Menu\n");
    root.write("/a.txt", "goto Menu\n");
    const std::string program = PANEL_REPLAY " ", dir = root.path("/").string();
    const std::string usage = "usage: panel-replay --root DIR [--lines] [SCRIPT.scenario]\n";
    const struct {
        std::string arguments, err;
    } cases[] = {
        {"", usage},
        {dir + "a.scenario", usage},
        {"--root " + dir + " " + dir + "a.txt", usage},
        {"--root " + dir + " --trace " + dir + "a.scenario", "unrecognized option '--trace'\n" + usage},
        {"--root " + dir + "a.txt " + dir + "a.scenario", dir + "a.txt: Not a directory\n"},
        {"--root " + dir + " " + dir + "none.scenario", dir + "none.scenario: No such file or directory\n"},
        {"--root " + dir + " < " + dir, "standard input: cannot be read\n"},
    };
    for (const auto &[arguments, err] : cases) {
        const ProgramRun played = run(root, program + arguments);
        EXPECT_EQ(played.status, 2) << arguments;
        EXPECT_EQ(played.out, "") << arguments;
        EXPECT_TRUE(played.err.ends_with(err)) << arguments << '\n' << played.err;
    }
    EXPECT_EQ(run(root, program + "--root " + dir + " " + dir + "a.scenario > /dev/full").status, 2);
    EXPECT_EQ(run(root, program + dir + "a.scenario --lines --root " + dir).status, 0);
}

TEST(Play, ChangesNothingOutsideTheRoot)
{
    const TestRoot root;
    const TestRoot outside;
    outside.write("/folder/kept", "as it was");
    const auto link = [&](const char *target, const char *path) {
        std::filesystem::create_symlink(outside.path(target), root.path(path));
    };
    link("/folder", "/out-folder");
    link("/folder/kept", "/out-file");
    link("/folder/new", "/dangling");
    std::filesystem::create_hard_link(outside.path("/folder/kept"), root.path("/hard"));
    std::filesystem::create_symlink("tmp", root.path("/inside"));
    const char *leads_out = "standard input:1: the path leads out of the root\n";
    for (const char *line : {"file /out-folder/a/b x", "rm /out-folder/kept", "mkdir /out-folder/a"})
        EXPECT_EQ(play(root, line).err, leads_out) << line;
    const ProgramRun played = play(root, R"(file /out-file "a\x00b"
file /dangling x
file /hard x
file /inside/a/b x
mkdir /tmp
mkdir /out-folder
rm /out-folder/
)");
    EXPECT_EQ(played.err, "");
    EXPECT_EQ(read_file(root.path("/out-file")), std::string("a\0b", 3));
    EXPECT_EQ(read_file(root.path("/tmp/a/b")), "x");
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(root.path("/out-folder"))));
    EXPECT_EQ(read_file(outside.path("/folder/kept")), "as it was");
    EXPECT_FALSE(std::filesystem::exists(outside.path("/folder/new")));
}
