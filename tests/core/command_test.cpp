#include "core/command.h"

#include "core/daemons.h"
#include "tests/support/test_root.h"

TEST(Command, CapturesAllOutput)
{
    const std::string outputs[] = {
        "",
        "abc",
        "one\ntwo\n",
        std::string(1022, 'x') + "\n",
        std::string(1023, 'y') + "\nend",
        std::string(100000, 'z'),
    };
    const TestRoot root;
    for (const std::string &output : outputs) {
        replay.outputs["tool"] = output;
        char *text = nullptr;
        EXPECT_EQ(myPipe("tool", &text), static_cast<int>(output.size()) + 1);
        EXPECT_EQ(text, output);
        free(text);
    }
    replay.failing["tool"] = true;
    char *text = nullptr;
    EXPECT_EQ(myPipe("tool", &text), -1);
    EXPECT_EQ(CommandOutput("tool").text(), nullptr);
}

TEST(Daemons, StartsWhatTheProcessListLacks)
{
    struct ListCase {
        const char *processes;
        std::string commands;
    };
    const std::string list = "@0 pipe /bin/ps -e 2> /dev/null\n";
    const std::string status = "@0 system /bin/echo network_status >> /tmp/lcd/lcd_debug_process\n"
                               "@0 system /usr/sbin/network_status &\n";
    const std::string monitor = "@0 system /bin/echo pc_monitor >> /tmp/lcd/lcd_debug_process\n"
                                "@0 system /usr/sbin/pc_monitor &\n";
    const ListCase cases[] = {
        {"  1 init\n", status + monitor},
        {"  1 init\n  9 my_network_status_x\n", monitor},
        {"  9 pc_monitor\n", status},
        {"  9 pc_monitor\n 10 network_status\n", ""},
    };
    const TestRoot root;
    replay.trace = true;
    for (const ListCase &test : cases) {
        replay.outputs["/bin/ps -e 2> /dev/null"] = test.processes;
        EXPECT_EQ(printed(check_daemons), list + test.commands);
    }
    replay.failing["/bin/ps -e 2> /dev/null"] = true;
    EXPECT_EQ(printed(check_daemons), list);
}
