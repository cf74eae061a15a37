#include "platform/escaped_text.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

static std::string escaped(std::string_view text)
{
    std::string out(escape_text({}, text) + 1, '?');
    escape_text(out, text);
    EXPECT_EQ(out.back(), '\0');
    out.pop_back();
    return out;
}

/* The text, or "malformed". */
static std::string unescaped(std::string text)
{
    const ssize_t length = unescape_text(text.data(), text.size());
    return length < 0 ? "malformed" : text.substr(0, static_cast<size_t>(length));
}

TEST(EscapedText, EscapesWhatOneLineCannotHold)
{
    EXPECT_EQ(escaped("a\\b\"c\nd\re\tf\fg"), R"(a\\b\"c\nd\re\tf\fg)");
    EXPECT_EQ(escaped({"\0\x01\x1f\x7f", 4}), R"(\x00\x01\x1f\x7f)");
    EXPECT_EQ(escaped(" ~\x80\xff="), " ~\x80\xff=");
    char room[4] = {'?', '?', '?', '?'};
    EXPECT_EQ(escape_text(std::span(room, 3), "a\nb"), 4u);
    EXPECT_EQ(std::string_view(room, 4), std::string_view("a\\\0?", 4)) << "cut";
}

TEST(EscapedText, ComesBackWhateverItHolds)
{
    std::mt19937 random(1);
    for (int round = 0; round < 500; round++) {
        std::string text(random() % 300, '\0');
        for (char &c : text)
            c = static_cast<char>(random());
        EXPECT_EQ(unescaped(escaped(text)), text);
    }
    EXPECT_EQ(unescaped(R"(\x4A\x4a\xC3)"), "JJ\xc3");
}

TEST(EscapedText, RefusesMalformedEscapes)
{
    for (const char *text : {"\\", "a\\", "\\q", "\\N", "\\0", "\\X41", "\\x", "\\x4", "\\xg1", "\\x1g", "\\x-1"})
        EXPECT_EQ(unescaped(text), "malformed") << text;
    char cut[] = "\\x41";
    EXPECT_EQ(unescape_text(cut, 3), -1) << "the last digit lies behind the text";
}
