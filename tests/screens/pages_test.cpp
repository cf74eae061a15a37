/* What single screens show. */
#include "core/screen_table.h"
#include "tests/gfx/drawn_text.h"

/* Shows the screen called `name`, entered from itself. */
static void show(const char *name)
{
    printed([name] { // glyphs of other fonts are missing
        switch_screen(name);
        switch_screen(name);
    });
    setReverseDisplay(0, LCD_HEIGHT - 1, LCD_HEIGHT, LCD_WIDTH); // the driver's way round
}

TEST(CurrentTime, WideLanguagesWriteTheDateTheirWay)
{
    const GlyphRoot root;
    root.use_language(7, {{TEXT_SUNDAY + 2, "Tu"},
                          {TEXT_JANUARY + 10, "11"},
                          {TEXT_MONTH_SEPARATOR, "m"},
                          {TEXT_DAY_SUFFIX, "d"},
                          {TEXT_YEAR_SUFFIX, "y"}});
    show("current time");
    EXPECT_EQ(read_line(63, 2, 40), "11m14d");
    EXPECT_EQ(read_line(45, 2, 40), "2023y");
    EXPECT_EQ(read_line(29, 2, 40), "Tu");
}

TEST(WirelessInfo, NamesSecurityAndWidth)
{
    const struct {
        const char *security, *key, *bandwidth, *rows;
    } cases[] = {
        {"wep", "13 characters", "0", "C: 6|S: WEP128|W: 20 / 40"},
        {"wep", "26 hexadecimal digits, 104", "1", "C: 6|S: WEP128|W: 20"},
        {"wep", "5 chr", "30", "C: 6|S: WEP64|W: 40"},
        {"psk", "13 characters", "", "C: 6|S: WPA|W: 20"},
        {"psk2", "", "2", "C: 6|S: WPA2|W: 20"},
        {"psk2_mixed", "", "3", "C: 6|S: both|W: 40"},
        {"", "", "3", "C: 6|S: none|W: 40"},
    };
    const GlyphRoot root;
    root.use_language(0, {{TEXT_CHANNEL, "C"},
                          {TEXT_SECURITY_MODE, "S"},
                          {TEXT_CHANNEL_WIDTH, "W"},
                          {TEXT_SECURITY_WEP_128, "WEP128"},
                          {TEXT_SECURITY_WEP_64, "WEP64"},
                          {TEXT_SECURITY_WPA, "WPA"},
                          {TEXT_SECURITY_WPA2, "WPA2"},
                          {TEXT_SECURITY_WPA_WPA2, "both"},
                          {TEXT_SECURITY_NONE, "none"},
                          {TEXT_WIRELESS_TITLE, "T"},
                          {TEXT_MENU_FAMILY_BOTTOM_LINE, "B"}});
    for (const auto &test : cases) {
        replay.settings = {{"wifi_dot11_mode", "7"}, {"wifi_channel", "6"},
                           {"wifi_def_key", "2"},    {"wifi_security", test.security},
                           {"wifi_key2", test.key},  {"wifi_bandwidth", test.bandwidth}};
        show("show wireless info");
        EXPECT_EQ(read_rows(), test.rows);
    }
}
