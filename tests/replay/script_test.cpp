/* How lines of scripts fall into words, and words into numbers. */
#include "replay/script.h"

#include <gtest/gtest.h>

using Words = std::vector<std::string>;
using namespace std::string_literals;

TEST(SplitLine, FindsTheWordsOrWhatIsWrongWithThem)
{
    const struct {
        std::string line;
        Words words;
        const char *error = "";
    } cases[] = {
        {" \t ", {}},
        {" \t# \"", {}},
        {"\tnvram  key\tvalue ", {"nvram", "key", "value"}},
        {"key #", {"key", "#"}},
        {"nvram \"two words\" \"\"", {"nvram", "two words", ""}},
        {R"(output a "b\x00c\"d\\")", {"output", "a", "b\0c\"d\\"s}},
        {R"(a"b c\n d\)", {"a\"b", "c\\n", "d\\"}},
        {"\xff\x80 \v\x01", {"\xff\x80", "\v\x01"}},
        {R"("b)", {""}, "a quoted word has no end"},
        {R"("b\)", {""}, "a quoted word has no end"},
        {R"("a"b)", {"a"}, "no blank behind a quoted word"},
        {R"("\q")", {"\\q"}, "an escape is unknown or incomplete"},
    };
    for (const auto &test : cases) {
        const ScriptLine split = split_line(test.line);
        EXPECT_EQ(split.words, test.words) << test.line;
        EXPECT_EQ(split.error, test.error) << test.line;
    }
}

TEST(ParseNumber, TakesDecimalDigitsAlone)
{
    EXPECT_EQ(parse_number("127", 127), 127u);
    EXPECT_EQ(parse_number("128", 127), std::nullopt);
    EXPECT_EQ(parse_number("18446744073709551615", UINT64_MAX), UINT64_MAX);
    for (const char *word : {"18446744073709551616", "", "-1", "+1", " 1", "1x", "0x1", "1.0"})
        EXPECT_EQ(parse_number(word, UINT64_MAX), std::nullopt) << word;
}
