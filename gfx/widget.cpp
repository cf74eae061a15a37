#include "gfx/widget.h"

#include "core/actions.h"
#include "gfx/glyph.h"
#include "gfx/utf8.h"
#include "lang/language.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

static constexpr int TITLE_BYTES = 128;
static constexpr int TITLE_TOP = LCD_HEIGHT - 1;
static constexpr int RIGHT_TITLE_CHARS = 54; // measured for the room of the left part
static constexpr int RIGHT_TITLE_GAP = 5;
static constexpr int RIGHT_TITLE_WIDTH = 118; // a wider one scrolls

/* Rows of pixels in a frame: at the title less the height of its glyphs, at the bottom line plus that of its own. */
struct FrameLayout {
    int titleRule;
    int listTop;
    int bottomText;
    int bottomRule;
    int bottomEdge;
};
static constexpr FrameLayout NARROW_LAYOUT = {62, 61, -1, -1, 2};
static constexpr FrameLayout WIDE_LAYOUT = {61, 59, 0, 1, 4};

static constexpr int BAR_LEFT = ROW_RIGHT_BESIDE_BAR + 2;
static constexpr int BAR_WIDTH = 9;
static constexpr int BAR_ARROWS = 10; // rows of the bar that its two ends take

int getSelectedItemId(const WidgetState *state)
{
    return state ? state->current : 0;
}

void setSelectedItemId(WidgetState *state, int id)
{
    if (state)
        state->pendingSelection = id;
}

static void drawTitle(int font, const char *title, FrameScroll *scroll, int action, const FrameLayout &layout,
                      WidgetFrame *frame)
{
    char left[TITLE_BYTES];
    copy_cut(left, title);
    int leftWidth = LCD_WIDTH;
    if (char *tab = strchr(left, '\t')) {
        *tab = '\0';
        const char *right = tab + 1;
        frame->hasRightTitle = true;
        leftWidth -= getStringWidth(font, right, RIGHT_TITLE_CHARS) + RIGHT_TITLE_GAP;
        drawStringScroll(LCD_WIDTH - 1, TITLE_TOP, font, ALIGN_RIGHT, DRAW_NORMAL, right, RIGHT_TITLE_WIDTH, action,
                         &scroll->titleRight);
    }
    drawStringScroll(0, TITLE_TOP, font, ALIGN_LEFT, DRAW_NORMAL, left, leftWidth, action, &scroll->titleLeft);

    const int height = lineMetrics(font, left).height;
    drawLine(0, layout.titleRule - height, LCD_WIDTH);
    frame->listTop = layout.listTop - height;
}

static void drawBottomLine(int font, const char *text, FrameScroll *scroll, int action, const FrameLayout &layout,
                           WidgetFrame *frame)
{
    const int height = lineMetrics(font, text).height;
    drawStringScroll(LCD_WIDTH / 2, layout.bottomText + height, font, ALIGN_CENTER, DRAW_NORMAL, text, LCD_WIDTH,
                     action, &scroll->bottomLine);
    drawLine(0, layout.bottomRule + height, LCD_WIDTH);
    frame->bottomEdge = layout.bottomEdge + height;
    frame->hasBottomLine = true;
}

WidgetFrame drawWidgetFrame(int font, const char *title, const char *bottomLine, FrameScroll *scroll, int action)
{
    const FrameLayout &layout = is_wide_language() ? WIDE_LAYOUT : NARROW_LAYOUT;
    WidgetFrame frame = {.listTop = LCD_HEIGHT - 1, .bottomEdge = 0, .hasRightTitle = false, .hasBottomLine = false};
    if (title)
        drawTitle(font, title, scroll, action, layout, &frame);
    if (bottomLine)
        drawBottomLine(font, bottomLine, scroll, action, layout, &frame);
    return frame;
}

LineMetrics lineMetrics(int font, const char *text)
{
    Utf8Char first;
    LineMetrics line;
    int width, spacing;
    getFontInfo(utf_8_get_char(text, 0, &first), font, &line.height, &width, &spacing, &line.gap);
    return line;
}

int visibleRows(const WidgetFrame &frame, const LineMetrics &line)
{
    const int pitch = line.height + line.gap;
    /* A damaged glyph file may claim no height. */
    return pitch > 0 ? (frame.listTop - frame.bottomEdge + line.gap + 1) / pitch : 0;
}

int rowTop(const WidgetFrame &frame, const LineMetrics &line, int row)
{
    return frame.listTop - (line.height + line.gap) * row;
}

int steppedPosition(int position, int last, int action)
{
    if (action == ACTION_UP && position > 0)
        position--;
    else if (action == ACTION_DOWN && position < last)
        position++;
    return position >= 0 && position <= last ? position : 0;
}

void drawFrameScrollBar(const WidgetFrame &frame, int positions, int position)
{
    const int height = frame.listTop - frame.bottomEdge + (frame.hasBottomLine ? 1 : 0);
    drawScrollBar(BAR_LEFT, frame.listTop - 1, height, 1, positions, position + 1);
}

void drawScrollBar(int x, int y, int barHeight, int relativeLength, int totalLines, int relativePosition)
{
    const int track = barHeight - BAR_ARROWS;
    if (totalLines <= 0 || barHeight <= 0 || relativeLength <= 0 || relativePosition < 0 || track <= 0) {
        printf("drawScrollBar return, totalLines %d, barHeight %d, relativeLength %d, relativePosition %d, "
               "totalScrBarLen %d\n",
               totalLines, barHeight, relativeLength, relativePosition, track);
        return;
    }
    const int thumb = std::max(track * relativeLength / totalLines, 1);
    /* The last position touches the end of the track, whatever the divisions dropped. */
    const int offset =
        relativePosition == totalLines ? track - thumb : (relativePosition - 1) * track * relativeLength / totalLines;

    drawRectangle(x, y, barHeight, BAR_WIDTH);
    setReverseDisplay(x + 1, y - 1, barHeight - 2, BAR_WIDTH - 2);
    drawLine(x + 3, y - 3, 3);
    drawDot(DRAW_NORMAL, x + 4, y - 2);
    drawRectangle(x + 3, y - 5 - offset, thumb, 3);
    drawDot(DRAW_NORMAL, x + 4, y - barHeight + 3);
    drawLine(x + 3, y - barHeight + 4, 3);
}
