#include "gfx/utf8.h"
#include "tests/support/test_root.h"

#include <cstring>
#include <vector>

/* The texts are copied to where their NUL is the last byte of its memory: the address sanitizer sees a walk past it. */
static std::vector<char> bounded(const char *text)
{
    return {text, text + strlen(text) + 1};
}

TEST(Utf8, WalksSeeTheCharactersAndStopAtTheNul)
{
    const std::pair<const char *, const char *> cases[] = {
        {"", ""},
        {"a\xC3\xA9\xE4\xB8\xAD\xEF\xBF\xBF", "0:61 1:e9 3:4e2d 6:ffff "}, // byte offset and code point
        {"\x80\x81z", "0:1 2:7a "}, // a stray continuation byte leads as its upper bits tell
        {"\xA4\xB8\xADz", "0:4e2d 3:7a "},
        {"\xC3z!", "0:fa 2:21 "},
        {"\xBF\xF0", "0:0 1:0 "},
        {"a\xC3", "0:61 1:0 "}, // cut off by the end
        {"\xE4\xB8", "0:0 "},
    };
    for (const auto &[text, characters] : cases) {
        const std::vector<char> copy = bounded(text);
        std::string seen;
        printed([&] {
            for (int i = 0; i < utf_8_str_length(copy.data()); i++) {
                Utf8Char record;
                char character[16];
                snprintf(character, sizeof character, "%d:%x ",
                         static_cast<int>(utf_8_str_forward(copy.data(), i) - copy.data()),
                         utf_8_to_ucs2(utf_8_get_char(copy.data(), i, &record)));
                seen += character;
            }
            EXPECT_STREQ(utf_8_str_forward_one(utf_8_str_forward(copy.data(), INT32_MAX)), "");
        });
        EXPECT_EQ(seen, characters);
    }
    EXPECT_EQ(printed([] { utf_8_str_length("\xF0z"); }),
              "utf_8_str_forward_one, none UCS2 character found in string \xF0z\n");
}

TEST(Utf8, CopiesEndOnlyWhereTheTextEndsFirst)
{
    const char *copies[] = {"......", "\xC3\xA9....", "\xC3\xA9z...", "\xC3\xA9z"};
    for (int n = 0; n < 4; n++) {
        char copy[] = "......";
        EXPECT_STREQ(utf_8_str_copy(copy, "\xC3\xA9z", n), copies[n]);
    }
}

/* Cutting keeps whole characters, as the walker sees them, and says nothing. */
TEST(Utf8, CutsAreOnACharacterBoundary)
{
    const struct {
        const char *text;
        int limit; // bytes but for the NUL
        const char *kept;
    } cases[] = {
        {"abc", 3, "abc"},
        {"\xE4\xB8\xAD\xC3\xA9", 4, "\xE4\xB8\xAD"},
        {"\xE4\xB8\xAD\xC3\xA9", 2, ""},
        {"\xF0\x9F\x98z", 2, "\xF0"}, // the stray byte leads a pair
        {"a\xE4\xB8", 3, "a\xE4\xB8"},
        {"a\xE4\xB8", 2, "a"},
    };
    for (const auto &c : cases) {
        std::vector<char> text = bounded(c.text), copy(static_cast<size_t>(c.limit) + 1, '.');
        EXPECT_EQ(printed([&] { copy_cut(copy, text.data()); }), "");
        cut_text(text.data(), c.limit);
        EXPECT_STREQ(copy.data(), c.kept) << c.text << " " << c.limit;
        EXPECT_STREQ(text.data(), c.kept) << c.text << " " << c.limit;
    }
}
