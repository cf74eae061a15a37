#include "gfx/info.h"

#include "core/actions.h"
#include "gfx/glyph.h"
#include "gfx/utf8.h"
#include "gfx/widget.h"
#include "lang/language.h"
#include "lang/text_id.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

/* The marquees of all pages. */
static FrameScroll frameScroll;

static constexpr char LINE_BREAKS[] = "\r\n\f";

/* A character of a line and its number there. */
struct LinePlace {
    const char *at;
    int index;
};

static bool endsLine(char c)
{
    return c == '\0' || strchr(LINE_BREAKS, c);
}

/* Traditional Chinese and Japanese have no blanks between words: their lines end at any character. */
static bool breaksAtWords()
{
    return get_current_language() != LANGUAGE_TC && get_current_language() != LANGUAGE_JP;
}

static LinePlace nextPlace(const LinePlace &place)
{
    return {utf_8_str_forward_one(place.at), place.index + 1};
}

/* Whether the characters of `line` before `end` fit. */
static bool fits(int font, const char *line, const LinePlace &end, int maxWidth)
{
    return end.at - line < LINE_BUFFER_BYTES && getStringWidth(font, line, end.index) <= maxWidth;
}

/* The first character of `line` that does not fit or ends it. `lastBreak` becomes the last break character up to there,
 * the first character of the line when there is none. */
static LinePlace scanLine(int font, const char *line, int maxWidth, LinePlace *lastBreak)
{
    LinePlace end = {line, 0};
    *lastBreak = end;
    while (!endsLine(*end.at)) {
        Utf8Char character;
        if (isBreakCharacter(utf_8_get_char(end.at, 0, &character)))
            *lastBreak = end;
        const LinePlace next = nextPlace(end);
        if (!fits(font, line, next, maxWidth))
            break;
        end = next;
    }
    return end;
}

int fitLine(int font, const char *text, char *lineBuffer, int maxWidth)
{
    const char *line = text + strspn(text, LINE_BREAKS);
    LinePlace lastBreak;
    LinePlace end = scanLine(font, line, maxWidth, &lastBreak);
    const bool full = !endsLine(*end.at);
    lineBuffer[0] = '\0';
    if (full && end.index == 0)
        return 0;
    if (full && breaksAtWords()) {
        end = lastBreak;
        if (end.index > 0 && fits(font, line, nextPlace(end), maxWidth))
            end = nextPlace(end);
    }
    const char *shown = line;
    if (end.index > 0 && (*line == ' ' || *line == '\t'))
        shown++;
    const auto length = static_cast<size_t>(end.at - shown);
    memcpy(lineBuffer, shown, length);
    lineBuffer[length] = '\0';
    return static_cast<int>(end.at - text);
}

/* A text as one call lays it out and draws it. */
struct PageView {
    int font;
    const char *text;
    WidgetFrame frame;
    LineMetrics line;
    int rows;      // of a page
    int rightEdge; // rightmost column of a line
};

/* The room of a line in pixels; the last one of a page shares it with the "more" mark when another page follows. */
static int lineWidth(const PageView &page, bool beforeMore)
{
    return page.rightEdge - (beforeMore ? getStringWidth(page.font, ml_str(TEXT_MORE), 0) : 0);
}

/* The bytes that the next line of the layout consumes, -1 when the layout ends. What only the mark leaves no room for
 * goes to the next page. */
static int consumeLine(const PageView &page, const char *text, bool beforeMore)
{
    char line[LINE_BUFFER_BYTES];
    const int consumed = fitLine(page.font, text, line, lineWidth(page, beforeMore));
    if (consumed > 0)
        return consumed;
    return beforeMore && fitLine(page.font, text, line, lineWidth(page, false)) > 0 ? 0 : -1;
}

/* Lays out up to `maxLines` lines, with room for the mark on each page when `withMore`. A form feed fills its page up.
 * The number of lines. */
static int layOutLines(const PageView &page, int32_t *lineStart, int maxLines, bool withMore)
{
    int count = 0;
    int offset = 0;
    while (count < maxLines) {
        const int consumed = consumeLine(page, page.text + offset, withMore && (count + 1) % page.rows == 0);
        if (consumed < 0)
            break;
        lineStart[count++] = offset;
        offset += consumed;
        if (page.text[offset] == '\f') {
            while (count % page.rows != 0 && count < maxLines)
                lineStart[count++] = offset;
            offset++;
        }
    }
    return count;
}

/* Whether the last page holds a single line, for whose text the line before it has room. */
static bool lastLineFitsBefore(const PageView &page, const WidgetState *state)
{
    const int last = state->lineCount - 1;
    if (last < 1 || last % page.rows != 0)
        return false;
    const int start = state->lineStart[last];
    if (start > 0 && page.text[start - 1] == '\f')
        return false;
    return getStringWidth(page.font, page.text + state->lineStart[last - 1], 0) < page.rightEdge;
}

/* Lays the text out, beside a scroll bar when it needs more than one page. */
static void layOut(PageView *page, WidgetState *state)
{
    state->lineCount = layOutLines(*page, state->lineStart, page->rows + 1, false);
    if (state->lineCount <= page->rows)
        return;
    page->rightEdge = ROW_RIGHT_BESIDE_BAR;
    state->lineCount = layOutLines(*page, state->lineStart, MAX_PAGE_LINES, true);
    if (lastLineFitsBefore(*page, state))
        state->lineCount--;
}

static int applyAction(PageView *page, WidgetState *state, int action)
{
    if (action == ACTION_ENTER) {
        state->current = 0;
        layOut(page, state);
    } else {
        state->lineCount = std::clamp(state->lineCount, 0, MAX_PAGE_LINES);
        page->rightEdge = state->lineCount > page->rows ? ROW_RIGHT_BESIDE_BAR : ROW_RIGHT;
    }
    const int pages = (state->lineCount + page->rows - 1) / page->rows;
    state->current = steppedPosition(state->current, pages - 1, action);
    return pages;
}

/* The line that was laid out at `start`, in a text that may have changed since. */
static const char *lineAt(const char *text, int start)
{
    const char *line = text;
    while (*line && line - text < start) {
        /* Not utf_8_str_forward_one, which reports invalid bytes: the lines before this one are not drawn. */
        Utf8Char character;
        line += strnlen(line, utf_8_get_char(line, 0, &character)->length);
    }
    return line;
}

static void drawPageLine(const PageView &page, const char *text, int y, bool beforeMore)
{
    /* A form feed stands for a row that its page is filled up with. */
    if (*text != '\f') {
        char line[LINE_BUFFER_BYTES];
        fitLine(page.font, text, line, lineWidth(page, beforeMore));
        drawString(ROW_LEFT, y, page.font, ALIGN_LEFT, DRAW_NORMAL, line);
    }
    if (beforeMore)
        drawString(page.rightEdge, y, page.font, ALIGN_RIGHT, DRAW_NORMAL, ml_str(TEXT_MORE));
}

static void drawLines(const PageView &page, const WidgetState *state)
{
    const int first = state->current * page.rows;
    for (int row = 0; row < page.rows && first + row < state->lineCount; row++) {
        const bool beforeMore = row == page.rows - 1 && first + row < state->lineCount - 1;
        drawPageLine(page, lineAt(page.text, state->lineStart[first + row]), rowTop(page.frame, page.line, row),
                     beforeMore);
    }
}

void drawInfo(int font, const char *title, const char *bottomLine, const char *text, WidgetState *state, int action)
{
    if (!state) {
        printf("drawInfo return\n");
        return;
    }
    const WidgetFrame frame = drawWidgetFrame(font, title, bottomLine, &frameScroll, action);
    if (!text)
        return;
    const LineMetrics line = lineMetrics(font, text);
    const int rows = visibleRows(frame, line);
    if (rows <= 0) {
        printf("drawInfo return\n");
        return;
    }
    PageView page = {font, text, frame, line, rows, ROW_RIGHT};
    const int pages = applyAction(&page, state, action);
    if (pages > 1)
        drawFrameScrollBar(frame, pages, state->current);
    drawLines(page, state);
}
