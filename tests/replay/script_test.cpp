/* How lines of scripts fall into words, and words into numbers. */
#include "platform/replay/quote_text.h"
#include "replay/script.h"

#include <gtest/gtest.h>
#include <random>

using Words = std::vector<std::string>;
using namespace std::string_literals;

TEST(SplitLine, FindsTheWords)
{
    const struct {
        std::string line;
        Words words;
    } cases[] = {
        {"", {}},
        {" \t ", {}},
        {"# nvram a b", {}},
        {" \t# \"", {}},
        {"pass", {"pass"}},
        {"\tnvram  key\tvalue ", {"nvram", "key", "value"}},
        {"key #", {"key", "#"}},
        {"nvram a \"\"", {"nvram", "a", ""}},
        {"nvram \"two words\" \" # \"", {"nvram", "two words", " # "}},
        {R"(file /a "\\ \" \n\r\t\f \x41\xc3\xA9")", {"file", "/a", "\\ \" \n\r\t\f A\xc3\xa9"}},
        {R"(output a "b\x00c")", {"output", "a", "b\0c"s}},
        {R"("\\")", {"\\"}},
        {R"(a"b c\n d\)", {"a\"b", "c\\n", "d\\"}},
        {"\xff\x80 \v\x01", {"\xff\x80", "\v\x01"}},
    };
    for (const auto &[line, words] : cases) {
        const ScriptLine split = split_line(line);
        EXPECT_EQ(split.words, words) << line;
        EXPECT_EQ(split.error, "") << line;
    }
}

TEST(SplitLine, RefusesMalformedQuotes)
{
    const struct {
        const char *line, *error;
    } cases[] = {
        {R"(nvram a ")", "a quoted word has no end"},        {R"(nvram a "b)", "a quoted word has no end"},
        {R"(nvram a "b\)", "a quoted word has no end"},      {R"(nvram a "b\")", "a quoted word has no end"},
        {R"(nvram "a"b)", "no blank behind a quoted word"},  {R"(nvram "a""b")", "no blank behind a quoted word"},
        {R"("\q")", "an escape is unknown or incomplete"},   {R"("\x4")", "an escape is unknown or incomplete"},
        {R"("\xgg")", "an escape is unknown or incomplete"},
    };
    for (const auto &[line, error] : cases)
        EXPECT_EQ(split_line(line).error, error) << line;
}

TEST(SplitLine, ReadsBackEveryQuotedText)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; round++) {
        std::string text(random() % 40, '\0');
        for (char &c : text)
            c = static_cast<char>(random());
        const ScriptLine split = split_line("key " + quote_text(text));
        ASSERT_EQ(split.words, (Words{"key", text})) << split.error;
        /* The same bytes as they are: whatever comes of them, the reader stays within the line. */
        split_line(text);
        split_line('"' + text);
    }
}

TEST(ParseNumber, TakesDecimalDigitsAlone)
{
    const struct {
        const char *word;
        uint64_t most;
        std::optional<uint64_t> number;
    } cases[] = {
        {"0", 0, 0},
        {"127", 127, 127},
        {"128", 127, {}},
        {"18446744073709551615", UINT64_MAX, UINT64_MAX},
        {"18446744073709551616", UINT64_MAX, {}},
        {"", 9, {}},
        {"-1", 9, {}},
        {"+1", 9, {}},
        {" 1", 9, {}},
        {"1 ", 9, {}},
        {"1x", 9, {}},
        {"0x1", 9, {}},
        {"1.0", 9, {}},
    };
    for (const auto &[word, most, number] : cases)
        EXPECT_EQ(parse_number(word, most), number) << word;
}
