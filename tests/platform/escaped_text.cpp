#include "platform/escaped_text.h"

#include <gtest/gtest.h>
#include <string>

/* The text, or "malformed". */
static std::string unescaped(std::string text)
{
    const ssize_t length = unescape_text(text.data(), text.size());
    return length < 0 ? "malformed" : text.substr(0, static_cast<size_t>(length));
}

TEST(EscapedText, EscapesWhatOneLineCannotHold)
{
    char out[64];
    const std::string_view text("a\\b\"c\nd\re\tf\fg\0\x1f\x7f ~\xff", 19),
        escaped = "a\\\\b\\\"c\\nd\\re\\tf\\fg\\x00\\x1f\\x7f ~\xff";
    EXPECT_EQ(escape_text(out, text), escaped.size());
    EXPECT_EQ(out, escaped);
    EXPECT_EQ(unescaped(out), text);
    char room[4] = {'?', '?', '?', '?'};
    EXPECT_EQ(escape_text(std::span(room, 3), "a\nb"), 4u);
    EXPECT_EQ(std::string_view(room, 4), std::string_view("a\\\0?", 4)) << "cut";
}

TEST(EscapedText, ComesBackUnlessMalformed)
{
    EXPECT_EQ(unescaped(R"(\x4A\x4a\xC3)"), "JJ\xc3");
    for (const char *text : {"a\\", "\\q", "\\N", "\\0", "\\X41", "\\x4", "\\xg1", "\\x1g", "\\x-1"})
        EXPECT_EQ(unescaped(text), "malformed") << text;
}
