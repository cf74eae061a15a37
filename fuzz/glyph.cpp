/* Glyph files of any bytes, which a text, list, page or table is made of. */
#include "core/actions.h"
#include "fuzz/fuzz.h"
#include "fuzz/router.h"
#include "gfx/frame_buffer.h"
#include "gfx/info.h"
#include "gfx/list.h"
#include "gfx/rowed_info.h"
#include "gfx/text.h"
#include "gfx/widget.h"
#include "lang/language.h"

#include <iterator>

static constexpr const char *NAMES[] = {"U_0061", "U_0062", "U_0020", "U_0000"};
static constexpr const char *ENDINGS[] = {"", "_2", "_3"};
static constexpr const char *TEXT = "aab ba\n\xE4\xB8\xAD\tba b\fab bab\xC3";

struct Place {
    int font, x, y, align, mode;
};

static void draw_texts(const Place &at, int action)
{
    ScrollState scroll = {};
    drawString(at.x, at.y, at.font, at.align, at.mode, TEXT);
    for (const int step : {static_cast<int>(ACTION_ENTER), action})
        drawStringScroll(at.x, at.y, at.font, at.align, at.mode, TEXT, LCD_WIDTH - at.x, step, &scroll);
    const int width = getStringWidth(at.font, TEXT, 0), room = width > 0 ? at.x * width / LCD_WIDTH : at.x;
    const int more = getStringWidth(at.font, TEXT, countFittingCharacters(at.font, TEXT, room) + 1);
    require(more >= width || more > room, "one more character than fit does not fit");
}

static void draw_list(const Place &at, int action)
{
    WidgetState state = {};
    const char *const items[] = {TEXT, "a", "", "b a", TEXT, "bb", nullptr};
    for (const int step : {static_cast<int>(ACTION_ENTER), action})
        drawSelect(at.font, "ab\ta", "b", items, &state, step);
    require(state.current >= 0 && state.current < 6, "the selected item is one of the list");
}

static void draw_page(const Place &at, int action)
{
    WidgetState state = {};
    for (const int step : {static_cast<int>(ACTION_ENTER), action})
        drawInfo(at.font, TEXT, nullptr, TEXT, &state, step);
    require(state.lineCount >= 0 && state.lineCount <= MAX_PAGE_LINES, "a layout has room in its record");
}

static void draw_table(const Place &at, int action)
{
    WidgetState state = {};
    const InfoRow rows[] = {{"a", "b", ""}, {"", "bb", "a"}, {"aab ba ab", "", ""}, {}};
    for (const int step : {static_cast<int>(ACTION_ENTER), action})
        drawRowedInfo(at.font, "a", "b", rows, &state, step);
    require(state.current >= 0 && state.current < 3, "the first row shown is one of the table");
}

static constexpr void (*WIDGETS[])(const Place &, int) = {draw_texts, draw_list, draw_page, draw_table};

void fuzz(Input &in)
{
    FuzzRouter router;
    const auto draw = WIDGETS[in.number(0, std::size(WIDGETS) - 1)];
    use_language(in.number(0, 1) ? LANGUAGE_JP : LANGUAGE_EN);
    const int font = in.number(1, 3), action = in.number(ACTION_ENTER, ACTION_DOWN);
    const int x = in.number(0, LCD_WIDTH - 1), y = in.number(0, LCD_HEIGHT - 1);
    const int align = in.number(ALIGN_LEFT, ALIGN_RIGHT), mode = in.number(DRAW_NORMAL, DRAW_REVERSE);
    for (const char *name : NAMES)
        router.files["/sbin/lcd_ml/_auto_bitmap_/" + (name + std::string(ENDINGS[font - 1]))] = in.text();
    clearScreenBuffer();
    draw({font, x, y, align, mode}, action);
}
