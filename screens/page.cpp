#include "screens/page.h"

#include "core/display.h"
#include "gfx/frame_buffer.h"
#include "gfx/info.h"
#include "gfx/list.h"

static constexpr int TEXT_FONT = 1;

void draw_page(const char *title, const char *bottom_line, const char *body, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawInfo(TEXT_FONT, title, bottom_line, body, state, action);
    showScreen();
}

void draw_list(const char *title, const char *bottom_line, const char *const *labels, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawSelect(TEXT_FONT, title, bottom_line, labels, state, action);
    showScreen();
}

void draw_table(const char *title, const char *bottom_line, const InfoRow *rows, WidgetState *state, int action)
{
    clearScreenBuffer();
    drawRowedInfo(TEXT_FONT, title, bottom_line, rows, state, action);
    showScreen();
}
