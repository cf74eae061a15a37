#include "gfx/list.h"

#include "core/actions.h"
#include "gfx/format.h"
#include "gfx/widget.h"
#include "lang/language.h"
#include "lang/text_id.h"

#include <algorithm>
#include <cstdio>
#include <utility>

static constexpr int HINT_BYTES = 128;

/* The marquees of all lists. */
static FrameScroll frameScroll;
static ScrollState itemScroll[MAX_LIST_ITEMS];

/* A list as one call draws it. */
struct ListView {
    int font;
    const char *const *items;
    int count;
    WidgetFrame frame;
    LineMetrics line;
    int rows; // visible at a time

    bool fits() const { return count <= rows; }
};

static int countItems(const char *const *items)
{
    int count = 0;
    while (items && count < MAX_LIST_ITEMS && items[count])
        count++;
    return count;
}

/* Selects the stored item in a view that shows its predecessor too, where there is room; else the first item. */
static void restoreSelection(const ListView &list, WidgetState *state)
{
    const int stored = std::exchange(state->pendingSelection, 0);
    state->current = stored > 0 && stored < list.count ? stored : 0;
    state->cursorRow = std::clamp(state->cursorRow, 0, state->current);
    state->cursorRow = std::max(state->cursorRow, state->current - (list.count - list.rows));
    if (state->current > 0 && state->cursorRow == 0 && list.rows >= 2)
        state->cursorRow = 1;
}

/* Afterwards the view lies within the list, and the selected item in the view. */
static void applyAction(const ListView &list, WidgetState *state, int action)
{
    if (action == ACTION_ENTER)
        restoreSelection(list, state);
    state->current = steppedPosition(state->current, list.count - 1, action);
    state->cursorRow = std::min(steppedPosition(state->cursorRow, list.rows - 1, action), state->current);
    if (list.fits()) {
        state->cursorRow = state->current;
    } else if (state->current - state->cursorRow > list.count - list.rows) {
        state->current = 0;
        state->cursorRow = 0;
    }
}

/* The hint in the title's place at the right: up and down choose, the ok key enters. */
static void drawHint(int font)
{
    char hint[HINT_BYTES];
    format_text(hint, "\x12+%s", ml_str(TEXT_OK_KEY));
    drawString(LCD_WIDTH - 1, LCD_HEIGHT - 1, font, ALIGN_RIGHT, DRAW_NORMAL, hint);
}

static void invertRow(const ListView &list, int y, int rightEdge)
{
    /* Wide glyphs stand apart: there the box takes the free row of pixels above them in. */
    if (is_wide_language())
        setReverseDisplay(0, y, list.line.height + 1, rightEdge + 1);
    else
        setReverseDisplay(0, y - 1, list.line.height, rightEdge + 1);
}

static void drawItems(const ListView &list, WidgetState *state, int rightEdge, int action)
{
    unsigned drawn = 0;
    for (int row = 0; row < std::min(list.rows, list.count); row++) {
        const int item = state->current - state->cursorRow + row;
        const int y = rowTop(list.frame, list.line, row);
        const bool wasShown = (state->drawnMask >> item & 1) != 0;
        drawStringScroll(ROW_LEFT, y, list.font, ALIGN_LEFT, DRAW_NORMAL, list.items[item], rightEdge,
                         wasShown ? action : 0, &itemScroll[item]);
        drawn |= 1u << item;
        if (item == state->current)
            invertRow(list, y, rightEdge);
    }
    /* Items from 16 on are not remembered: a long one stands still. */
    state->drawnMask = static_cast<uint16_t>(drawn);
}

void drawSelect(int font, const char *title, const char *bottomLine, const char *const *items, WidgetState *state,
                int action)
{
    if (!state) {
        printf("drawSelect return\n");
        return;
    }
    ListView list = {.font = font, .items = items, .count = countItems(items), .frame = {}, .line = {}, .rows = 0};
    list.frame = drawWidgetFrame(font, title, bottomLine, &frameScroll, action);
    if (list.count == 0)
        return;
    list.line = lineMetrics(font, items[0]);
    list.rows = visibleRows(list.frame, list.line);
    if (list.rows <= 0) {
        printf("drawSelect return\n");
        return;
    }
    applyAction(list, state, action);
    if (!list.fits()) {
        if (!list.frame.hasRightTitle)
            drawHint(font);
        drawFrameScrollBar(list.frame, list.count, state->current);
    }
    drawItems(list, state, list.fits() ? ROW_RIGHT : ROW_RIGHT_BESIDE_BAR, action);
}
