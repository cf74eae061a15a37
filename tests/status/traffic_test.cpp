#include "status/traffic.h"

#include "tests/gfx/glyph_root.h"

#include <optional>

using namespace std::string_literals;

static constexpr uint32_t M = 1u << 20;

TEST(Traffic, ReadsSpeedsAndKeepsTheHighest)
{
    const struct {
        std::optional<std::string> text; // nothing: no file
        uint32_t speed, peak;
    } cases[] = {
        {{}, 0, 0},
        {"1000\n9999\n", 1000, 1000},
        {{}, 1000, 1000},
        {"1000000001", 1000, 1000},
        {"-5", 0, 1000},
        {" 12 13", 12, 1000},
        {"7\0008"s, 7, 1000},
        {std::string(98, '0') + "56", 5, 1000},
        {"1000000000", 1000000000, 1000000000},
    };
    const TestRoot root;
    const std::string folder = "/tmp/lcd/network_status/speed/";
    root.write(folder + "up", "77\n");
    for (const auto &test : cases) {
        std::filesystem::remove(root.path(folder + "down"));
        if (test.text)
            root.write(folder + "down", *test.text);
        EXPECT_EQ(read_speed(DOWNLOAD), test.speed) << test.text.value_or("no file");
        EXPECT_EQ(get_peak_speed(DOWNLOAD), test.peak) << test.text.value_or("no file");
    }
    EXPECT_EQ(get_peak_speed(UPLOAD), 0u);
    EXPECT_EQ(read_speed(UPLOAD), 77u);
}

template <typename Format, typename Value> static std::string formatted(Format format, Value value)
{
    char text[32];
    format(std::span<char>(text), value);
    return text;
}

TEST(Traffic, FormatsSpeeds)
{
    const struct {
        uint32_t value;
        std::string speed, dial, dial_mega;
    } cases[] = {
        {0, "0k", "0", "0"},
        {1, "1k", "1", "0.001"},
        {2098, "2k", "2", "0.002"},
        {1023999, "999k", "999", "0.976"},
        {1024000, "1.000M", "1.000", "1.000"},
        {M - 1, "1.000M", "1.000", "1.000"},
        {M + 1049, "1.001M", "1.001", "1.001"},
        {UINT32_MAX, "4095.999M", "4095.999", "4095.999"},
    };
    const GlyphRoot root;
    for (const auto &test : cases) {
        EXPECT_EQ(formatted(format_speed, test.value), test.speed);
        EXPECT_EQ(formatted(format_dial_value, test.value), test.dial);
        EXPECT_EQ(formatted(format_dial_value_mega, test.value), test.dial_mega);
    }
}

TEST(Traffic, FormatsAmounts)
{
    const std::pair<std::string, const char *> cases[] = {
        {"-4096", "0kB"},
        {"0", "1kB"},
        {"0004096 \r\n", "4kB"},
        {"1023999", "999kB"},
        {"1024000", "1.000MB"},
        {"2097151", "1.999MB"},
        {"1048575999", "999.99MB"},
        {"1048576000", "1.000GB"},
        {"1073741824", "1.000GB"},
        {"0002147483647", "1.999GB"},
        {"10871635968", "10.125GB"},
        {"13255342817285", "12345.GB"},
        {"1073741823999999999", "999999GB"},
        {std::string(90, '9'), "931322GB"},
    };
    const GlyphRoot root;
    for (const auto &[amount, text] : cases)
        EXPECT_EQ(formatted(format_amount, amount.c_str()), text) << amount;
}
