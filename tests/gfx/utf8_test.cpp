#include "gfx/utf8.h"
#include "tests/support/test_root.h"

#include <cstring>
#include <vector>

struct Character {
    int start; // byte offset
    int codePoint;
};

/* The texts are copied to where their NUL is the last byte of its memory: the address sanitizer sees a walk past it. */
TEST(Utf8, WalksSeeTheCharactersAndStopAtTheNul)
{
    const struct {
        const char *text;
        std::vector<Character> characters;
        std::vector<const char *> reported; // what is left of the text at each report of a walk
    } cases[] = {
        {"", {}, {}},
        {"a\x7F", {{0, 'a'}, {1, 0x7F}}, {}},
        {"\xC3\xA9z", {{0, 0xE9}, {2, 'z'}}, {}},
        {"\xE4\xB8\xAD\xEF\xBF\xBF", {{0, 0x4E2D}, {3, 0xFFFF}}, {}},
        {"\x80\x81z", {{0, 0x01}, {2, 'z'}}, {}}, // a stray continuation byte leads as its upper bits tell
        {"\xA4\xB8\xADz", {{0, 0x4E2D}, {3, 'z'}}, {}},
        {"\xC3z!", {{0, 0xFA}, {2, '!'}}, {}},
        {"\xF0\x9F\x98\x80", {{0, 0}, {1, 0x7D8}, {3, 0}}, {"\xF0\x9F\x98\x80"}},
        {"\xBF\xF0", {{0, 0}, {1, 0}}, {"\xBF\xF0", "\xF0"}},
        {"a\xC3", {{0, 'a'}, {1, 0}}, {}}, // cut off by the end
        {"\xE4\xB8", {{0, 0}}, {}},
    };
    for (const auto &c : cases) {
        const std::vector<char> copy(c.text, c.text + strlen(c.text) + 1);
        const char *text = copy.data();
        const int count = static_cast<int>(c.characters.size());
        std::string reports;
        for (const char *rest : c.reported)
            reports += std::string("utf_8_str_forward_one, none UCS2 character found in string ") + rest + "\n";
        EXPECT_EQ(printed([&] { EXPECT_EQ(utf_8_str_length(text), count); }), reports);
        printed([&] {
            Utf8Char record;
            for (int i = 0; i < count; i++) {
                EXPECT_EQ(utf_8_to_ucs2(utf_8_get_char(text, i, &record)), c.characters[i].codePoint) << c.text << i;
                EXPECT_EQ(utf_8_str_forward(text, i) - text, c.characters[i].start) << c.text << i;
            }
            for (const int behind : {count, INT32_MAX}) {
                record = {{'x', 'x', 'x'}, 3};
                EXPECT_EQ(utf_8_get_char(text, behind, &record)->length, 1);
                EXPECT_EQ(record.bytes[0], '\0');
                EXPECT_STREQ(utf_8_str_forward(text, behind), "");
            }
        });
    }
}

TEST(Utf8, CopiesEndOnlyWhereTheTextEndsFirst)
{
    const char *copies[] = {"........", "\xC3\xA9......", "\xC3\xA9\xE4\xB8\xAD...", "\xC3\xA9\xE4\xB8\xADz..",
                            "\xC3\xA9\xE4\xB8\xADz"};
    for (int n = 0; n < 5; n++) {
        char copy[] = "........";
        EXPECT_EQ(utf_8_str_copy(copy, "\xC3\xA9\xE4\xB8\xADz", n), copy);
        EXPECT_STREQ(copy, copies[n]);
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
        {"abc", 0, ""},
        {"\xE4\xB8\xAD\xC3\xA9", 5, "\xE4\xB8\xAD\xC3\xA9"},
        {"\xE4\xB8\xAD\xC3\xA9", 4, "\xE4\xB8\xAD"},
        {"\xE4\xB8\xAD\xC3\xA9", 2, ""},
        {"\xF0\x9F\x98z", 2, "\xF0"}, // the stray byte leads a pair
        {"\xF0\x9F\x98z", 3, "\xF0\x9F\x98"},
        {"a\xE4\xB8", 3, "a\xE4\xB8"},
        {"a\xE4\xB8", 2, "a"},
    };
    for (const auto &c : cases) {
        std::vector<char> text(c.text, c.text + strlen(c.text) + 1);
        std::vector<char> copy(static_cast<size_t>(c.limit) + 1, '.');
        EXPECT_EQ(printed([&] {
                      copy_cut(copy, text.data());
                      cut_text(text.data(), c.limit);
                  }),
                  "");
        EXPECT_STREQ(copy.data(), c.kept) << c.text << " " << c.limit;
        EXPECT_STREQ(text.data(), c.kept) << c.text << " " << c.limit;
    }
    char text[] = "ab";
    cut_text(text, -1);
    EXPECT_STREQ(text, "");
}
