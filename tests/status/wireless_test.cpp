#include "status/wireless.h"

#include "tests/support/test_root.h"

TEST(Wireless, FindsTheChannelInTheReport)
{
    const std::pair<std::string, int> cases[] = {
        {"Channel 01 : 2.412 GHz\n Current Frequency:2.437 GHz (Channel 11)\n", 11},
        {"Current FrequencyChannel\n\xFF 0000149", 149},
        {"Current Frequency Channel 12345678", 1234567},
        {std::string(1 << 20, 'x') + "Current Frequency Channel 48", 48},
        {"Current Frequency:2.437 GHz (Channel", 6},
        {"Current Frequency:2.437 GHz (channel 11)", 6},
        {"Channel 11 Current Frequency", 6},
        {"", 6},
    };
    const TestRoot root;
    const char *command = "/sbin/iwlist ath0 channel  2> /dev/null";
    for (const auto &[report, channel] : cases) {
        replay.outputs[command] = report;
        EXPECT_EQ(wl_auto_channel(), channel) << report.substr(0, 60);
    }
    replay.failing[command] = true;
    EXPECT_EQ(wl_auto_channel(), 6) << "without the tool";
    replay.trace = true;
    replay.settings["wifi_dot11_mode"] = "01";
    EXPECT_EQ(printed([] { EXPECT_EQ(wl_auto_channel(), 6); }), "") << "the radio is off: the tool is not asked";
}
