#include "status/traffic.h"

#include "tests/status/traffic_root.h"

#include <optional>
#include <random>

using namespace std::string_literals;

static constexpr uint32_t M = 1u << 20, G = 1u << 30;

TEST(Traffic, ReadsSpeedsAndKeepsTheHighest)
{
    struct ReadingCase {
        std::optional<std::string> text; // nothing: no file
        uint32_t speed, peak;
    };
    const ReadingCase cases[] = {
        {{}, 0, 0},
        {"1500000000\n", 0, 0},
        {"1000\n9999\n", 1000, 1000},
        {{}, 1000, 1000},
        {"1500000000\n", 1000, 1000},
        {"1000000001", 1000, 1000},
        {"99999999999999999999", 1000, 1000},
        {"-5", 0, 1000},
        {{}, 0, 1000},
        {" 12 13", 12, 1000},
        {"", 0, 1000},
        {"7\0008"s, 7, 1000},
        {"speed 5", 0, 1000},
        {std::string(98, '0') + "56", 5, 1000},
        {std::string(1 << 20, '0') + "9", 0, 1000},
        {"1000000000", 1000000000, 1000000000},
        {"999", 999, 1000000000},
    };
    const TrafficRoot root;
    root.write_speed("up", "77\n");
    for (const ReadingCase &test : cases) {
        std::filesystem::remove(root.path("/tmp/lcd/network_status/speed/down"));
        if (test.text)
            root.write_speed("down", *test.text);
        EXPECT_EQ(read_speed(DOWNLOAD), test.speed) << test.text.value_or("no file").substr(0, 20);
        EXPECT_EQ(get_peak_speed(DOWNLOAD), test.peak) << test.text.value_or("no file").substr(0, 20);
    }
    EXPECT_EQ(get_peak_speed(UPLOAD), 0u);
    EXPECT_EQ(read_speed(UPLOAD), 77u);
    EXPECT_EQ(get_peak_speed(UPLOAD), 77u);
}

template <typename Format, typename Value> static std::string formatted(Format format, Value value)
{
    char text[32];
    format(std::span<char>(text), value);
    return text;
}

TEST(Traffic, FormatsSpeeds)
{
    struct SpeedCase {
        uint32_t value;
        std::string speed, dial, dial_mega;
    };
    const SpeedCase cases[] = {
        {0, "0k", "0", "0"},
        {1, "1k", "1", "0.001"},
        {2047, "1k", "1", "0.001"},
        {2048, "2k", "2", "0.001"},
        {2098, "2k", "2", "0.002"},
        {524288, "512k", "512", "0.500"},
        {1023999, "999k", "999", "0.976"},
        {1024000, "1.000M", "1.000", "1.000"},
        {M - 1, "1.000M", "1.000", "1.000"},
        {M + 1048, "1.000M", "1.000", "1.000"},
        {M + 1049, "1.001M", "1.001", "1.001"},
        {2 * M - 1, "1.999M", "1.999", "1.999"},
        {1000000000, "953.674M", "953.674", "953.674"},
        {UINT32_MAX, "4095.999M", "4095.999", "4095.999"},
    };
    const TrafficRoot root;
    for (const SpeedCase &test : cases) {
        EXPECT_EQ(formatted(format_speed, test.value), test.speed);
        EXPECT_EQ(formatted(format_dial_value, test.value), test.dial);
        EXPECT_EQ(formatted(format_dial_value_mega, test.value), test.dial_mega);
    }
}

TEST(Traffic, FormatsAmounts)
{
    static constexpr std::pair<const char *, const char *> cases[] = {
        {"", "0kB"},
        {" \r\n", "0kB"},
        {"x", "0kB"},
        {"-4096", "0kB"},
        {"0", "1kB"},
        {"1023\n", "1kB"},
        {"2047", "1kB"},
        {"2048", "2kB"},
        {"0004096 \r\n", "4kB"},
        {"4096x8", "4kB"},
        {"1023999", "999kB"},
        {"1024000", "1.000MB"},
        {"1048575", "1.000MB"},
        {"1500000", "1.430MB"},
        {"524288000", "500.00MB"},
        {"1048575999", "999.99MB"},
        {"1048576000", "1.000GB"},
        {"1073741823", "1.000GB"},
        {"1073741824", "1.000GB"},
        {"0001610612736", "1.500GB"},
    };
    const TrafficRoot root;
    for (const auto &[amount, text] : cases)
        EXPECT_EQ(formatted(format_amount, amount), text) << amount;
}

/* whole * unit + rest, multiplied by hand. */
static std::string amount_of(std::string whole, uint64_t unit, uint64_t rest)
{
    uint64_t carry = rest;
    for (size_t i = whole.size(); i-- > 0; carry /= 10) {
        carry += static_cast<uint64_t>(whole[i] - '0') * unit;
        whole[i] = static_cast<char>('0' + carry % 10);
    }
    return std::to_string(carry) + whole;
}

TEST(Traffic, FormatsLargeAmountsExactly)
{
    const TrafficRoot root;
    std::mt19937 random;
    for (size_t digits = 1; digits <= 90; digits++)
        for (uint32_t round = 0; round < 40; round++) {
            const bool mega = digits <= 3 && round % 2;
            const uint32_t unit = mega ? M : G;
            std::string whole(digits, '1');
            for (char &digit : std::span(whole).subspan(1))
                digit = static_cast<char>('0' + random() % 10);
            const uint32_t rests[] = {0, 1, unit - 1, static_cast<uint32_t>(random()) % unit};
            const uint32_t rest = rests[round / 2 % 4];
            const std::string fraction = std::to_string(1000 + uint64_t{rest} * 1000 / unit).substr(1);
            const std::string amount = amount_of(whole, unit, rest);
            EXPECT_EQ(formatted(format_amount, amount.c_str()),
                      (whole + "." + fraction).substr(0, 6) + (mega ? "MB" : "GB"))
                << amount;
        }
    EXPECT_EQ(formatted(format_amount, amount_of(std::string(1 << 20, '9'), G, 0).c_str()), "999999GB");
}
