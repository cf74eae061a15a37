/* What lists, pages and tables share: the record that a screen keeps for them, their frame, their rows and the scroll
 * bar. */
#pragma once

#include "gfx/frame_buffer.h"
#include "gfx/text.h"

#include <cstdint>

constexpr int MAX_PAGE_LINES = 200; // lines that a page's layout can hold

/* The memory of a widget, owned by its screen (or family of screens), zero at start. */
struct WidgetState {
    int32_t current;                   // list: selected item; page: page shown; table: first row shown
    int32_t cursorRow;                 // list: row of the selected item in the view, 0 at the top
    int32_t pendingSelection;          // list: item to select when it is entered next; 0: none
    int32_t lineCount;                 // page: lines laid out
    uint16_t drawnMask;                // list: bit i set when item i was drawn by the previous call
    int32_t lineStart[MAX_PAGE_LINES]; // page: byte offset of each line
};

/* The selected item; 0 for null. */
int getSelectedItemId(const WidgetState *state);

/* Stores the item that the list selects when it is entered next. A null state is ignored. */
void setSelectedItemId(WidgetState *state, int id);

/* The marquees of a frame; each widget has its own. */
struct FrameScroll {
    ScrollState titleLeft;
    ScrollState titleRight;
    ScrollState bottomLine;
};

/* The room that title and bottom line leave. */
struct WidgetFrame {
    int listTop;        // top edge of the first row
    int bottomEdge;     // lowest row of pixels that the rows may use
    bool hasRightTitle; // the title has a right part
    bool hasBottomLine;
};

/* Draws title (null: none; a TAB sends what follows to the right end) and bottom line (null: none) with their rules.
 * A title is cut to 127 bytes. */
WidgetFrame drawWidgetFrame(int font, const char *title, const char *bottomLine, FrameScroll *scroll, int action);

constexpr int ROW_LEFT = 1;                          // leftmost column of a row's text
constexpr int ROW_RIGHT = LCD_WIDTH - 1;             // its rightmost column
constexpr int ROW_RIGHT_BESIDE_BAR = ROW_RIGHT - 10; // its rightmost column beside a scroll bar

/* The measures of a line of text, those of its first character. */
struct LineMetrics {
    int height; // pixels of a glyph
    int gap;    // extra pixels between two lines
};

/* Loads the first character of `text`. */
LineMetrics lineMetrics(int font, const char *text);

/* The rows that fit in a frame; 0 or less when there is no room. */
int visibleRows(const WidgetFrame &frame, const LineMetrics &line);

/* The top edge of row number `row` of a frame, 0 at the top. */
int rowTop(const WidgetFrame &frame, const LineMetrics &line, int row);

/* `position`, moved by one within 0..`last` for ACTION_UP and ACTION_DOWN; 0 when it is outside of that. */
int steppedPosition(int position, int last, int action);

/* The scroll bar beside the rows of a frame: `positions` of them, standing at `position` (from 0). */
void drawFrameScrollBar(const WidgetFrame &frame, int positions, int position);

/* A scroll bar 9 pixels wide with its top-left pixel at (x, y): `totalLines` positions, a thumb `relativeLength`
 * positions long, standing at `relativePosition` (from 1). Impossible geometry is refused with a message. */
void drawScrollBar(int x, int y, int barHeight, int relativeLength, int totalLines, int relativePosition);
