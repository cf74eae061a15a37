#include "sim/terminal_screen.h"

#include "sim/terminal_kind.h"
#include "sim/text.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <langinfo.h>
#include <stdexcept>
#include <sys/ioctl.h>

#define NCURSES_NOMACROS
#include <ncurses.h>

namespace sim {

static constexpr int ESCAPE_MS = 50;     // a key that begins with Escape comes within
static constexpr wchar_t UNSHOWN = L'?'; // instead of a character that the terminal cannot show
static constexpr short LIT_PAIR = 1, DARK_PAIR = 2;

/* The LCD's ink and glass, lit and dark. */
static constexpr struct Palette {
    int colors; // that the terminal must have
    short lit_ink, lit_glass, dark_ink, dark_glass;
} palettes[] = {
    {256, 234, 151, 233, 239},
    {0, COLOR_BLACK, COLOR_WHITE, COLOR_BLACK, COLOR_BLUE},
};

static constexpr std::pair<int, Key> keys[] = {
    {KEY_UP, Key::UP},          {KEY_DOWN, Key::DOWN},           {KEY_LEFT, Key::LEFT},     {KEY_RIGHT, Key::RIGHT},
    {KEY_PPAGE, Key::PAGE_UP},  {KEY_NPAGE, Key::PAGE_DOWN},     {KEY_HOME, Key::HOME},     {KEY_END, Key::END},
    {KEY_ENTER, Key::ENTER},    {KEY_BACKSPACE, Key::BACKSPACE}, {KEY_DC, Key::DELETE},
};
static constexpr std::pair<wint_t, Key> control_characters[] = {
    {L'\x03', Key::INTERRUPT}, {L'\x1a', Key::STOP}, {L'\x1b', Key::ESCAPE},    {L'\t', Key::TAB},
    {L'\n', Key::ENTER},       {L'\r', Key::ENTER},  {L'\x7f', Key::BACKSPACE}, {L'\b', Key::BACKSPACE},
};

template <typename Code, size_t COUNT> static Key find_key(const std::pair<Code, Key> (&list)[COUNT], wint_t code)
{
    for (const auto &[known, key] : list)
        if (static_cast<wint_t>(known) == code)
            return key;
    return Key::OTHER;
}

/* Whether the locale's characters are those of Unicode. */
static bool take_locale()
{
    std::setlocale(LC_CTYPE, "");
    return std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

static void start_colors()
{
    if (!has_colors())
        return;
    start_color();
    use_default_colors();
    const Palette &palette = COLORS >= palettes[0].colors ? palettes[0] : palettes[1];
    init_pair(LIT_PAIR, palette.lit_ink, palette.lit_glass);
    init_pair(DARK_PAIR, palette.dark_ink, palette.dark_glass);
}

Screen::Screen(int terminal) : terminal_(terminal), unicode_(take_locale())
{
    tcgetattr(terminal, &modes_);
    if (!newterm(nullptr, fdopen(dup(terminal), "w"), stdin))
        throw std::runtime_error("no screen can be made of this terminal");
    guard_.emplace(terminal, modes_, farewell_sequence());
    /* Of the handlers that newterm has set this alone would be called: see stop. */
    signal(SIGTSTP, SIG_DFL);
    start_colors();
    /* Of its keys the terminal makes no signals: Ctrl-Z must give it back before the whole job stops. */
    raw();
    noecho();
    curs_set(0);
    nonl();
    keypad(stdscr, true);
    nodelay(stdscr, true);
    set_escdelay(ESCAPE_MS);
}

Screen::~Screen()
{
    endwin();
}

int Screen::lines() const
{
    return getmaxy(stdscr);
}

int Screen::columns() const
{
    return getmaxx(stdscr);
}

void Screen::begin() const
{
    werase(stdscr);
}

void Screen::show() const
{
    wrefresh(stdscr);
}

static chtype attributes_of(Style style)
{
    switch (style) {
    case Style::QUIET:
        return A_DIM;
    case Style::HEADING:
        return A_BOLD;
    case Style::MARKED:
        return A_REVERSE;
    case Style::LIT:
        return has_colors() ? static_cast<chtype>(COLOR_PAIR(LIT_PAIR)) : A_REVERSE;
    case Style::DARK:
        return has_colors() ? static_cast<chtype>(COLOR_PAIR(DARK_PAIR)) : A_DIM;
    case Style::PLAIN:
        break;
    }
    return A_NORMAL;
}

static void use(Style style)
{
    wattrset(stdscr, static_cast<int>(attributes_of(style)));
}

/* The Unicode character that `bytes` is in UTF-8. */
static wchar_t decoded(std::string_view bytes)
{
    unsigned character = static_cast<unsigned char>(bytes[0]);
    if (bytes.size() > 1)
        character &= 0x7fu >> bytes.size();
    for (const char c : bytes.substr(1))
        character = character << 6 | (static_cast<unsigned char>(c) & 0x3f);
    return static_cast<wchar_t>(character);
}

/* `text` in exactly `width` cells. */
std::wstring Screen::widened(std::string_view text, int width) const
{
    std::wstring cells;
    int left = width;
    while (!text.empty()) {
        const size_t length = std::max<size_t>(1, character_length(text));
        wchar_t character = decoded(text.substr(0, length));
        if (wcwidth(character) < 0 || (!unicode_ && length > 1))
            character = UNSHOWN;
        if (wcwidth(character) > left)
            break;
        left -= wcwidth(character);
        cells += character;
        text.remove_prefix(length);
    }
    return cells.append(static_cast<size_t>(left), L' ');
}

void Screen::put(int y, int x, int width, std::string_view text, Style style) const
{
    put_cells(y, x, widened(text, std::clamp(width, 0, std::max(0, columns() - x))), style);
}

void Screen::put_cells(int y, int x, const std::wstring &cells, Style style) const
{
    use(style);
    mvwaddnwstr(stdscr, y, x, cells.data(), static_cast<int>(cells.size()));
}

void Screen::put_frame(const Area &area, std::string_view title) const
{
    const wchar_t *const parts = unicode_ ? L"┌─┐│└┘" : L"+-+|++";
    const std::wstring line(static_cast<size_t>(area.width - 2), parts[1]);
    const int bottom = area.y + area.height - 1, right = area.x + area.width - 1;
    put_cells(area.y, area.x, parts[0] + line + parts[2], Style::QUIET);
    for (int y = area.y + 1; y < bottom; ++y)
        for (const int x : {area.x, right})
            put_cells(y, x, {parts[3]}, Style::QUIET);
    put_cells(bottom, area.x, parts[4] + line + parts[5], Style::QUIET);
    if (!title.empty())
        put_cells(area.y, area.x + 2, L" " + widened(title, static_cast<int>(title.size())) + L" ", Style::HEADING);
}

std::optional<Stroke> Screen::next_stroke() const
{
    wint_t code;
    const int kind = wget_wch(stdscr, &code);
    if (kind == ERR)
        return std::nullopt;
    if (kind == KEY_CODE_YES)
        return Stroke{find_key(keys, code), ""};
    if (code < L' ' || code == L'\x7f')
        return Stroke{find_key(control_characters, code), ""};
    char bytes[MB_LEN_MAX];
    std::mbstate_t state = {};
    const size_t length = std::wcrtomb(bytes, static_cast<wchar_t>(code), &state);
    return length <= sizeof bytes ? Stroke{Key::CHARACTER, std::string(bytes, length)} : Stroke{Key::OTHER, ""};
}

void Screen::resize() const
{
    winsize size;
    if (ioctl(terminal_, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 && size.ws_col > 0)
        resizeterm(size.ws_row, size.ws_col);
}

void Screen::restore() const
{
    reset_prog_mode();
    resize();
    wclear(stdscr);
    wrefresh(stdscr);
}

void Screen::stop() const
{
    sigset_t stop_signal, output_signal;
    sigemptyset(&stop_signal);
    sigaddset(&stop_signal, SIGTSTP);
    sigemptyset(&output_signal);
    sigaddset(&output_signal, SIGTTOU);
    /* If the shell has the terminal already, giving it back must not stop this program halfway. */
    pthread_sigmask(SIG_BLOCK, &output_signal, nullptr);
    endwin();
    pthread_sigmask(SIG_UNBLOCK, &output_signal, nullptr);
    kill(0, SIGTSTP);
    pthread_sigmask(SIG_UNBLOCK, &stop_signal, nullptr); // here it stops
    pthread_sigmask(SIG_BLOCK, &stop_signal, nullptr);
}

} // namespace sim
