#include "platform/desk/command.h"

#include <cerrno>
#include <cstring>
#include <string_view>

static constexpr char QUOTES[] = "\"'";
static constexpr char SEPARATORS[] = " \t\n;&|<>()`"; // a word begins behind each
static constexpr char WORD_ENDS[] = " \t\n;&|<>()`\"'";
static constexpr std::string_view NO_FILE = "/dev/null"; // the same on every machine

/* A text that is written piece by piece as far as it fits. */
struct BoundedText {
    std::span<char> room;
    size_t length = 0; // of the whole text

    void put(char c)
    {
        if (length < room.size())
            room[length] = c;
        length++;
    }

    void put_quoted(const char *text)
    {
        put('\'');
        for (; *text; text++) {
            put(*text);
            if (*text == '\'')
                for (const char c : std::string_view("\\''"))
                    put(c);
        }
        put('\'');
    }
};

/* Whether the word that begins here names a place below the router's root. */
static bool is_router_path(const char *word)
{
    word += strspn(word, QUOTES);
    return *word == '/' && std::string_view(word, strcspn(word, WORD_ENDS)) != NO_FILE;
}

bool root_command(std::span<char> out, const char *root, const char *command)
{
    BoundedText text{out};
    char quote = '\0';
    bool word_begins = true;
    for (; *command; command++) {
        if (word_begins && is_router_path(command))
            text.put_quoted(root);
        text.put(*command);
        if (*command == quote)
            quote = '\0';
        else if (!quote && strchr(QUOTES, *command))
            quote = *command;
        word_begins = !quote && strchr(SEPARATORS, *command);
    }
    text.put('\0');
    if (text.length <= out.size())
        return true;
    errno = E2BIG;
    return false;
}
