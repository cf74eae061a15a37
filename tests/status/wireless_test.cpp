#include "status/wireless.h"

#include "tests/support/test_root.h"

static const std::string CHANNEL = "/sbin/iwlist ath0 channel  2> /dev/null";

TEST(Wireless, FindsTheChannelInTheReport)
{
    const std::pair<std::string, int> cases[] = {
        {"Channel 01 : 2.412 GHz\n Current Frequency:2.437 GHz (Channel 11)\n", 11},
        {"Current Frequency=5.18 GHz\nChannel:1", 1},
        {"Current Frequency Channel -36Channel 40", 36},
        {"Current FrequencyChannel\n\xFF 0000149", 149},
        {"Current Frequency Channel 12345678", 1234567},
        {"Current Frequency Channel 00000008", 0},
        {std::string(1 << 20, 'x') + "Current Frequency Channel 48", 48},
        {"Current Frequency:2.437 GHz (Channel", 6},
        {"Current Frequency:2.437 GHz (channel 11)", 6},
        {"Channel 11 Current Frequency", 6},
        {"Current Frequenc Channel 11", 6},
        {"", 6},
    };
    const TestRoot root;
    for (const auto &[report, channel] : cases) {
        replay.outputs[CHANNEL] = report;
        EXPECT_EQ(wl_auto_channel(), channel) << report.substr(0, 60);
    }
    replay.failing[CHANNEL] = true;
    EXPECT_EQ(wl_auto_channel(), 6) << "without the tool";
}

TEST(Wireless, AsksTheToolOnlyWhileTheRadioIsOn)
{
    const TestRoot root;
    replay.trace = true;
    replay.outputs[CHANNEL] = "Current Frequency:2.462 GHz (Channel 11)";
    for (const char *mode : {"", "2", "g0", "0", "01"}) {
        replay.settings["wifi_dot11_mode"] = mode;
        const bool on = mode[0] != '0';
        EXPECT_EQ(is_wireless_radio_on(), on) << mode;
        EXPECT_EQ(printed([&] { EXPECT_EQ(wl_auto_channel(), on ? 11 : 6) << mode; }),
                  on ? "@0 pipe " + CHANNEL + "\n" : "");
    }
}
