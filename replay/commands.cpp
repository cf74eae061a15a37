#include "replay/commands.h"

#include "core/input.h"
#include "core/main_loop.h"
#include "core/screen_table.h"
#include "core/timer.h"
#include "gfx/frame_buffer.h"
#include "platform/replay/quote_text.h"
#include "platform/replay/replay.h"
#include "platform/router.h"
#include "replay/picture.h"
#include "replay/router_files.h"
#include "replay/script.h"

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <limits>
#include <net/if.h>
#include <sys/ioctl.h>

static constexpr const char *ACTION_FILE = "/tmp/lcd/lcd_action";
static constexpr const char *EVENT_FILE = "/tmp/lcd/lcd_event";

struct Command {
    const char *name;
    size_t least, most; // number of words behind the name
    Outcome (*play)(Words words);
    bool nul_in_text = false; // the last word may hold NUL bytes
};

static Outcome bad_line(std::string reason)
{
    return {PLAY_BAD, std::move(reason)};
}

/* The outcome of what gives a reason when it fails, else "". */
static Outcome done_unless(std::string reason)
{
    return reason.empty() ? Outcome{} : bad_line(std::move(reason));
}

static Outcome bad_number(const std::string &word, uint64_t most)
{
    return bad_line(quote_text(word) + " is not a number from 0 to " + std::to_string(most));
}

static Outcome no_frame()
{
    return bad_line("there is no frame yet");
}

/* The row of `commands` that the first word names, played with the words behind it. */
static Outcome play_words(std::span<const Command> commands, Words words)
{
    const auto command = std::ranges::find(commands, words[0], &Command::name);
    if (command == commands.end())
        return bad_line("unknown word " + quote_text(words[0]));
    const Words rest = words.subspan(1);
    if (rest.size() < command->least)
        return bad_line("too few words behind " + quote_text(words[0]));
    if (rest.size() > command->most)
        return bad_line("too many words behind " + quote_text(words[0]));
    const Words texts = command->nul_in_text ? rest.first(rest.size() - 1) : rest;
    if (std::ranges::any_of(texts, [](const std::string &word) { return word.find('\0') != std::string::npos; }))
        return bad_line("a NUL byte may stand only in the text of a file or an output");
    return command->play(rest);
}

static Outcome play_nvram(Words words)
{
    replay.settings[words[0]] = words[1];
    return {};
}

static Outcome play_nvram_unset(Words words)
{
    replay.settings.erase(words[0]);
    return {};
}

static Outcome play_file(Words words)
{
    return done_unless(write_router_file(words[0], words[1]));
}

static Outcome play_rm(Words words)
{
    return done_unless(remove_router_path(words[0]));
}

static Outcome play_mkdir(Words words)
{
    return done_unless(make_router_folder(words[0]));
}

static Outcome play_output(Words words)
{
    replay.failing.erase(words[0]);
    replay.outputs[words[0]] = words[1];
    return {};
}

static Outcome play_fail(Words words)
{
    replay.failing[words[0]] = true;
    return {};
}

static Outcome play_interface(Words words)
{
    const std::string &name = words[0];
    if (name.empty() || name.size() >= IFNAMSIZ)
        return bad_line("an interface's name has 1 to " + std::to_string(IFNAMSIZ - 1) + " bytes");
    const auto mtu = parse_number(words[4], INT_MAX);
    if (!mtu)
        return bad_number(words[4], INT_MAX);
    replay.interfaces[name] = {words[1], words[2], words[3], static_cast<int>(*mtu)};
    ifreq query = {};
    name.copy(query.ifr_name, IFNAMSIZ - 1);
    for (const unsigned long request : {SIOCGIFADDR, SIOCGIFNETMASK, SIOCGIFHWADDR})
        if (router_interface_query(-1, request, &query) < 0)
            return bad_line("a malformed address");
    return {};
}

static Outcome play_interface_unset(Words words)
{
    replay.interfaces.erase(words[0]);
    return {};
}

static Outcome play_time(Words words)
{
    constexpr uint64_t most = std::numeric_limits<time_t>::max();
    const auto seconds = parse_number(words[0], most);
    if (!seconds)
        return bad_number(words[0], most);
    replay.clock = static_cast<time_t>(*seconds);
    return {};
}

static Outcome play_start(Words)
{
    panel_start();
    return {};
}

static Outcome play_pass(Words words)
{
    const auto count = words.empty() ? 1 : parse_number(words[0], UINT32_MAX);
    if (!count)
        return bad_number(words[0], UINT32_MAX);
    for (uint64_t i = 0; i < *count; i++) {
        lcd_tick_handler(SIGALRM);
        panel_pass();
    }
    return {};
}

/* Writes the word for the daemon as a key or event process does, and raises the input flag. */
static Outcome announce(const std::string &action)
{
    const std::string reason = write_router_file(ACTION_FILE, action + '\n');
    if (reason.empty())
        lcd_input_handler(SIGUSR1);
    return done_unless(reason);
}

static Outcome play_key(Words words)
{
    return announce(words[0]);
}

static Outcome play_event(Words words)
{
    std::string line = words[0];
    for (const std::string &word : words.subspan(1))
        line += ' ' + word;
    const std::string reason = write_router_file(EVENT_FILE, line + '\n');
    return reason.empty() ? announce("event") : bad_line(reason);
}

static Outcome play_input_signal(Words)
{
    lcd_input_handler(SIGUSR1);
    return {};
}

static Outcome play_language_signal(Words)
{
    lcd_language_handler(SIGUSR2);
    return {};
}

static constexpr Command signals[] = {
    {"input", 0, 0, play_input_signal},
    {"language", 0, 0, play_language_signal},
};

static Outcome play_signal(Words words)
{
    return play_words(signals, words);
}

static Outcome play_goto(Words words)
{
    switch_screen(words[0].c_str());
    return {};
}

/* A text that a scenario expects, and the one that is there. */
static Outcome expect_text(const std::string &expected, const std::string &found)
{
    return expected == found ? Outcome{} : Outcome{PLAY_FAILED, quote_text(found)};
}

static Outcome expect_screen(Words words)
{
    return expect_text(words[0], current_screen->name);
}

static Outcome expect_nvram(Words words)
{
    const auto setting = replay.settings.find(words[0]);
    return expect_text(words[1], setting == replay.settings.end() ? "" : setting->second);
}

static Outcome expect_pixel(Words words, bool lit)
{
    const auto x = parse_number(words[0], LCD_WIDTH - 1);
    if (!x)
        return bad_number(words[0], LCD_WIDTH - 1);
    const auto y = parse_number(words[1], LCD_HEIGHT - 1);
    if (!y)
        return bad_number(words[1], LCD_HEIGHT - 1);
    if (replay.frame_count == 0)
        return no_frame();
    if (is_lit(replay.frame, static_cast<int>(*x), static_cast<int>(*y)) == lit)
        return {};
    return {PLAY_FAILED, lit ? "dark" : "lit"};
}

static Outcome expect_lit(Words words)
{
    return expect_pixel(words, true);
}

static Outcome expect_dark(Words words)
{
    return expect_pixel(words, false);
}

static constexpr Command expectations[] = {
    {"screen", 1, 1, expect_screen},
    {"nvram", 2, 2, expect_nvram},
    {"lit", 2, 2, expect_lit},
    {"dark", 2, 2, expect_dark},
};

static Outcome play_expect(Words words)
{
    return play_words(expectations, words);
}

static Outcome play_shot(Words words)
{
    return replay.frame_count == 0 ? no_frame() : done_unless(write_png(replay.frame, words[0]));
}

static Outcome play_art(Words)
{
    if (replay.frame_count == 0)
        return no_frame();
    fputs(text_art(replay.frame).c_str(), stdout);
    return {};
}

static constexpr Command commands[] = {
    {"nvram", 2, 2, play_nvram},
    {"nvram-unset", 1, 1, play_nvram_unset},
    {"file", 2, 2, play_file, true},
    {"rm", 1, 1, play_rm},
    {"mkdir", 1, 1, play_mkdir},
    {"output", 2, 2, play_output, true},
    {"fail", 1, 1, play_fail},
    {"interface", 5, 5, play_interface},
    {"interface-unset", 1, 1, play_interface_unset},
    {"time", 1, 1, play_time},
    {"start", 0, 0, play_start},
    {"pass", 0, 1, play_pass},
    {"key", 1, 1, play_key},
    {"event", 1, SIZE_MAX, play_event},
    {"signal", 1, SIZE_MAX, play_signal},
    {"goto", 1, 1, play_goto},
    {"expect", 1, SIZE_MAX, play_expect},
    {"shot", 1, 1, play_shot},
    {"art", 0, 0, play_art},
};

Outcome play_command(Words words)
{
    return play_words(commands, words);
}
