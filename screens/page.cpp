#include "screens/page.h"

#include "core/display.h"
#include "gfx/format.h"
#include "gfx/frame_buffer.h"
#include "gfx/glyph.h"
#include "gfx/info.h"
#include "gfx/list.h"
#include "gfx/text.h"
#include "lang/language.h"

void draw_page(const char *title, const char *bottom_line, const char *body, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawInfo(FONT_TEXT, title, bottom_line, body, state, action);
    showScreen();
}

void draw_list(const char *title, const char *bottom_line, const char *const *labels, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawSelect(FONT_TEXT, title, bottom_line, labels, state, action);
    showScreen();
}

void draw_table(const char *title, const char *bottom_line, const InfoRow *rows, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawRowedInfo(FONT_TEXT, title, bottom_line, rows, state, action);
    showScreen();
}

void format_on_off_title(Title &title, TextId name, bool on)
{
    format_text(title, "%s\t%s", ml_str(name), ml_str(on ? TEXT_ON : TEXT_OFF));
}

int status_rule_row()
{
    return is_wide_language() ? 13 : 11;
}

void draw_status_rule()
{
    drawLine(0, status_rule_row(), LCD_WIDTH);
}

void draw_status_bottom_line(int action, ScrollState *scroll)
{
    drawStringScroll(LCD_WIDTH / 2, is_wide_language() ? 12 : 11, FONT_TEXT, ALIGN_CENTER, DRAW_NORMAL,
                     ml_str(TEXT_STATUS_BOTTOM_LINE), LCD_WIDTH, action, scroll);
}
