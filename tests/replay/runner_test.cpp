/* tests/run_scenario.sh: it must be able to fail. */
#include "tests/replay/program.h"

TEST(RunScenario, HoldsThePlayAndTheTraceToWhatIsExpected)
{
    const char *trace = "lcd switch screen failed, current welcome, switch to Menu\n@0 screen menu\n@0 frame\n";
    const struct {
        const char *scenario, *trace;
        int status;
    } cases[] = {
        {"goto Menu\n", nullptr, 0},
        {"mkdir /tmp/lcd\ngoto Menu\ngoto menu\n", trace, 0},
        {"mkdir /tmp/lcd\ngoto Menu\ngoto menu\ngoto menu\n", trace, 1},
        {"expect screen menu\n", nullptr, 1},
        {"foo\n", "", 2},
    };
    for (const auto &[scenario, expected, status] : cases) {
        const TestRoot root;
        root.write("/a.scenario", scenario);
        if (expected)
            root.write("/a.trace", expected);
        std::filesystem::create_directory(root.path("/work"));
        const std::string work = root.path("/work").string(), script = root.path("/a.scenario").string();
        const ProgramRun played = run(root, "TMPDIR=" + work + " " SOURCE_DIR "/tests/run_scenario.sh " BUILT_ROOT " " +
                                                script + " " PANEL_REPLAY);
        EXPECT_EQ(played.status, status) << scenario << played.out << played.err;
        EXPECT_TRUE(std::filesystem::is_empty(root.path("/work"))) << scenario;
    }
}
