/* Glyph files of any bytes, which texts, lists, pages and tables are made of. */
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

static constexpr const char *NAMES[] = {"U_0061", "U_0062", "U_0020", "U_0000"};
static constexpr const char *ENDINGS[] = {"", "_2", "_3"};
static constexpr const char *TEXT = "aab ba\n\xE4\xB8\xAD\tba b\fab bab\xC3";

void fuzz(Input &in)
{
    FuzzRouter router;
    use_language(in.number(0, 1) ? LANGUAGE_JP : LANGUAGE_EN);
    const int font = in.number(1, 3), action = in.number(ACTION_ENTER, ACTION_DOWN);
    const int x = in.number(0, LCD_WIDTH - 1), y = in.number(0, LCD_HEIGHT - 1);
    const int align = in.number(ALIGN_LEFT, ALIGN_RIGHT), mode = in.number(DRAW_NORMAL, DRAW_REVERSE);
    for (const char *name : NAMES)
        router.files["/sbin/lcd_ml/_auto_bitmap_/" + (name + std::string(ENDINGS[font - 1]))] = in.text();

    ScrollState scroll = {};
    WidgetState list = {}, page = {}, table = {};
    const char *const items[] = {TEXT, "a", "", "b a", TEXT, "bb", nullptr};
    const InfoRow rows[] = {{"a", "b", ""}, {"", "bb", "a"}, {"aab ba ab", "", ""}, {}};
    for (const int step : {static_cast<int>(ACTION_ENTER), action}) {
        clearScreenBuffer();
        drawString(x, y, font, align, mode, TEXT);
        drawStringScroll(x, y, font, align, mode, TEXT, LCD_WIDTH - x, step, &scroll);
        drawSelect(font, "ab\ta", "b", items, &list, step);
        drawInfo(font, TEXT, nullptr, TEXT, &page, step);
        drawRowedInfo(font, "a", "b", rows, &table, step);
        require(list.current >= 0 && list.current < 6, "the selected item is one of the list");
        require(page.lineCount >= 0 && page.lineCount <= MAX_PAGE_LINES, "a layout has room in its record");
        require(table.current >= 0 && table.current < 3, "the first row shown is one of the table");
    }
    const int width = getStringWidth(font, TEXT, 0), room = width > 0 ? x * width / LCD_WIDTH : x;
    const int more = getStringWidth(font, TEXT, countFittingCharacters(font, TEXT, room) + 1);
    require(more >= width || more > room, "one more character than fit does not fit");
}
