#include "sim/terminal_view.h"

#include "sim/terminal_lcd.h"
#include "sim/text.h"

#include <algorithm>

namespace sim {

static constexpr int LEAST_BELOW = 3;   // lines of menu or log below the LCD
static constexpr int LEAST_BESIDE = 44; // columns of a menu beside it
static constexpr int LEAST_SPLIT = 100; // columns below it that menu and log share
static constexpr int FRAME = 2;         // lines and columns of a frame
static constexpr int STATUS = 1;        // lines
static constexpr int LABEL_WIDTH = 28;

static constexpr std::string_view help_lines[] = {
    "Arrows, Enter      the panel's arrows and OK",
    "M or Escape        the panel's MENU",
    "Space              the clock stands still, goes on",
    "+ -                the clock runs faster, slower",
    ".                  one tick",
    "Tab                the inputs, and back to the panel",
    "",
    "Among the inputs:",
    "Up Down            the next one",
    "Page Up, Page Down the next group",
    "Left Right         another value",
    "Enter              does it, or types a value",
    "Delete             removes a settings key",
    "Escape             back to the panel",
    "",
    "Q or Ctrl-C        ends everything",
};
static constexpr int HELP_WIDTH = 54;

struct Layout {
    const CellShape *shape;
    Area lcd, menu, log; // the LCD with its frame
};

static Layout lay_out_panes(const CellShape &shape, int lines, int columns, bool beside, bool in_menu)
{
    const Area lcd = {0, 0, shape.lines() + FRAME, shape.columns() + FRAME};
    const Area below = {lcd.height, 0, lines - STATUS - lcd.height, columns};
    if (beside)
        return {&shape, lcd, {0, lcd.width + 1, lines - STATUS, columns - lcd.width - 1},
                {below.y, 0, below.height, lcd.width}};
    if (columns < LEAST_SPLIT)
        return {&shape, lcd, in_menu ? below : Area{}, in_menu ? Area{} : below};
    const int half = columns / 2;
    return {&shape, lcd, {below.y, 0, below.height, half}, {below.y, half + 1, below.height, columns - half - 1}};
}

/* With the most legible cells that have room; nothing when none have. */
static std::optional<Layout> lay_out(const Screen &screen, bool in_menu)
{
    const int lines = screen.lines(), columns = screen.columns();
    for (const CellShape &shape : cell_shapes()) {
        if (shape.unicode && !screen.unicode())
            continue;
        const bool beside = columns >= shape.columns() + FRAME + 1 + LEAST_BESIDE;
        const int least_lines = shape.lines() + FRAME + STATUS + (beside ? 0 : LEAST_BELOW);
        if (columns >= shape.columns() + FRAME && lines >= least_lines)
            return lay_out_panes(shape, lines, columns, beside, in_menu);
    }
    return std::nullopt;
}

static void draw_lcd(const Screen &screen, const Layout &layout, const Picture &picture)
{
    screen.put_frame(layout.lcd, picture.lit ? "" : "backlight off");
    for (int line = 0; line < layout.shape->lines(); ++line)
        screen.put_cells(layout.lcd.y + 1 + line, layout.lcd.x + 1, lcd_line(picture.pixels, *layout.shape, line),
                         picture.lit ? Style::LIT : Style::DARK);
}

static void draw_row(const Screen &screen, const Area &line, const MenuRow &row, Style style)
{
    const int label = std::min(LABEL_WIDTH, line.width / 2);
    screen.put(line.y, line.x, line.width, "  " + row.label, style);
    screen.put(line.y, line.x + label, line.width - label, " " + row.value, style);
}

/* A heading stands above the first row of each group; the selected row stands in the middle. */
static void draw_menu(const Screen &screen, const Area &area, const TerminalView &view)
{
    std::vector<const MenuRow *> lines; // null: the heading of the row that follows
    size_t selected = 0;
    for (size_t i = 0; i < view.rows.size(); ++i) {
        if (i == 0 || view.rows[i].group != view.rows[i - 1].group)
            lines.push_back(nullptr);
        if (i == view.selected)
            selected = lines.size();
        lines.push_back(&view.rows[i]);
    }
    const auto height = static_cast<size_t>(std::max(0, area.height));
    const size_t last_top = lines.size() - std::min(lines.size(), height);
    const size_t top = std::min(last_top, selected - std::min(selected, height / 2));
    for (size_t i = 0; i < height && top + i < lines.size(); ++i) {
        const Area line = {area.y + static_cast<int>(i), area.x, 1, area.width};
        const MenuRow *const row = lines[top + i];
        if (row)
            draw_row(screen, line, *row, view.in_menu && top + i == selected ? Style::MARKED : Style::PLAIN);
        else
            screen.put(line.y, line.x, line.width, lines[top + i + 1]->group, Style::HEADING);
    }
}

static void draw_log(const Screen &screen, const Area &area, const std::deque<std::string> &log)
{
    const int count = std::clamp(static_cast<int>(log.size()), 0, std::max(0, area.height));
    for (int i = 0; i < count; ++i)
        screen.put(area.y + i, area.x, area.width, log[log.size() - static_cast<size_t>(count - i)], Style::QUIET);
}

static std::string status_line(const TerminalView &view)
{
    const std::string seconds = std::to_string(view.seconds % 60);
    return " " + std::to_string(view.seconds / 60) + ":" + (seconds.size() < 2 ? "0" : "") + seconds + "  " +
           (view.speed == "pause" ? "paused" : "x" + view.speed) + "  Tab: inputs  ?: help  Q: end  " + view.address;
}

/* The end of what is being typed, as far as there is room. */
static std::string typing_line(const Typing &typing, int columns)
{
    const std::string prompt = " " + typing.row.label + ": ";
    std::string_view text = typing.text;
    while (!text.empty() && prompt.size() + text.size() + 1 > static_cast<size_t>(columns))
        text.remove_prefix(std::max<size_t>(1, character_length(text)));
    return prompt + std::string(text) + "_";
}

static void draw_status(const Screen &screen, const TerminalView &view)
{
    std::string text = status_line(view);
    if (!view.message.empty())
        text = " " + view.message;
    else if (view.typing)
        text = typing_line(*view.typing, screen.columns());
    screen.put(screen.lines() - 1, 0, screen.columns(), text, Style::MARKED);
}

static void draw_help(const Screen &screen)
{
    const Area area = {std::max(0, (screen.lines() - static_cast<int>(std::size(help_lines)) - FRAME) / 2),
                       std::max(0, (screen.columns() - HELP_WIDTH - FRAME) / 2),
                       static_cast<int>(std::size(help_lines)) + FRAME, HELP_WIDTH + FRAME};
    int y = area.y;
    screen.put_frame(area, "Keys");
    for (const std::string_view line : help_lines)
        screen.put(++y, area.x + 1, HELP_WIDTH, " " + std::string(line));
}

/* The least that the picture takes, in words. */
static void draw_want(const Screen &screen)
{
    const CellShape *least = &cell_shapes().front();
    for (const CellShape &shape : cell_shapes())
        if (!shape.unicode || screen.unicode())
            least = &shape;
    screen.put(0, 0, screen.columns(),
               "The panel takes " + std::to_string(least->columns() + FRAME) + " x " +
                   std::to_string(least->lines() + FRAME + STATUS + LEAST_BELOW) + " characters.",
               Style::HEADING);
    screen.put(1, 0, screen.columns(), "This terminal has " + std::to_string(screen.columns()) + " x " +
                                           std::to_string(screen.lines()) + ".");
    if (!screen.unicode())
        screen.put(2, 0, screen.columns(), "With UTF-8 (LANG=C.UTF-8) fewer are enough.");
}

void draw(const Screen &screen, const TerminalView &view)
{
    screen.begin();
    if (const auto layout = lay_out(screen, view.in_menu)) {
        draw_lcd(screen, *layout, view.news.picture);
        draw_menu(screen, layout->menu, view);
        draw_log(screen, layout->log, view.log);
        draw_status(screen, view);
        if (view.help)
            draw_help(screen);
    } else {
        draw_want(screen);
    }
    screen.show();
}

} // namespace sim
