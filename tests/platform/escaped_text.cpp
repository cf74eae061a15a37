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
    EXPECT_EQ(escaped({"a\\b\"c\nd\re\tf\fg\0\x1f\x7f ~\xff", 19}), "a\\\\b\\\"c\\nd\\re\\tf\\fg\\x00\\x1f\\x7f ~\xff");
    char room[4] = {'?', '?', '?', '?'};
    EXPECT_EQ(escape_text(std::span(room, 3), "a\nb"), 4u);
    EXPECT_EQ(std::string_view(room, 4), std::string_view("a\\\0?", 4)) << "cut";
}

TEST(EscapedText, ComesBackWhateverItHoldsUnlessMalformed)
{
    std::mt19937 random(1);
    for (int round = 0; round < 500; round++) {
        std::string text(random() % 300, '\0');
        for (char &c : text)
            c = static_cast<char>(random());
        EXPECT_EQ(unescaped(escaped(text)), text);
    }
    EXPECT_EQ(unescaped(R"(\x4A\x4a\xC3)"), "JJ\xc3");
    for (const char *text : {"a\\", "\\q", "\\N", "\\0", "\\X41", "\\x4", "\\xg1", "\\x1g", "\\x-1"})
        EXPECT_EQ(unescaped(text), "malformed") << text;
}
