#include "gfx/rowed_info.h"

#include "core/actions.h"
#include "gfx/format.h"
#include "gfx/widget.h"

#include <algorithm>
#include <cstdio>

static constexpr int MAX_TABLE_ROWS = 254;
static constexpr int JOINED_BYTES = 152;

/* The marquees of all tables. */
static FrameScroll frameScroll;
static ScrollState rowScroll[MAX_TABLE_ROWS];

static int countRows(const InfoRow *rows)
{
    int count = 0;
    while (count < MAX_TABLE_ROWS && (*rows[count].label || *rows[count].value || *rows[count].prefix))
        count++;
    return count;
}

/* The measures of a row's last text that is not empty. */
static LineMetrics rowMetrics(int font, const InfoRow &row)
{
    LineMetrics line = {};
    for (const char *text : {row.label, row.value, row.prefix})
        if (*text)
            line = lineMetrics(font, text);
    return line;
}

static void drawRow(int font, int y, const InfoRow &row, int rightEdge, int action, ScrollState *scroll)
{
    const int valueWidth = getStringWidth(font, row.value, 0);
    const int labelWidth = rightEdge - valueWidth - getStringWidth(font, row.prefix, 0);
    drawStringScroll(ROW_LEFT, y, font, ALIGN_LEFT, DRAW_NORMAL, row.label, labelWidth, action, scroll);

    char joined[JOINED_BYTES];
    format_text(joined, "%s%s", row.prefix, row.value);
    drawString(labelWidth + 1, y, font, ALIGN_LEFT, DRAW_NORMAL, joined);
}

void drawRowedInfo(int font, const char *title, const char *bottomLine, const InfoRow *rows, WidgetState *state,
                   int action)
{
    if (!state) {
        printf("drawRowedInfo return\n");
        return;
    }
    const WidgetFrame frame = drawWidgetFrame(font, title, bottomLine, &frameScroll, action);
    if (!rows)
        return;
    const int count = countRows(rows);
    if (count == 0) {
        printf("drawRowedInfo return, totalContentLineNum %d\n", count);
        return;
    }
    const LineMetrics line = rowMetrics(font, rows[0]);
    const int visible = visibleRows(frame, line);
    if (visible <= 0)
        return;

    const int lastFirst = count - visible;
    state->current = action == ACTION_ENTER ? 0 : steppedPosition(state->current, lastFirst, action);
    if (lastFirst > 0)
        drawFrameScrollBar(frame, lastFirst + 1, state->current);
    for (int i = 0; i < std::min(visible, count); i++) {
        const int row = state->current + i;
        drawRow(font, rowTop(frame, line, i), rows[row], lastFirst > 0 ? ROW_RIGHT_BESIDE_BAR : ROW_RIGHT, action,
                &rowScroll[row]);
    }
}
