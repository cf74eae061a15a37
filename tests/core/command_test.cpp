#include "core/command.h"

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
