/* The information page: a long text, wrapped and shown page by page. */
#pragma once

struct WidgetState;

constexpr int LINE_BUFFER_BYTES = 144; // what fitLine's buffer must hold

/* Fits the start of `text` into a line of `maxWidth` pixels and writes the line to `lineBuffer`. The number of bytes
 * that the line consumes, 0 when nothing can be laid out. */
int fitLine(int font, const char *text, char *lineBuffer, int maxWidth);

/* Draws the page and applies `action`: ACTION_ENTER lays the text out and shows its first page, ACTION_UP and
 * ACTION_DOWN turn it, any other redraws. `title`, `bottomLine` and `text` may be null. A text that changes under its
 * layout is shown as far as it reaches. A null state is refused with a message. */
void drawInfo(int font, const char *title, const char *bottomLine, const char *text, WidgetState *state, int action);
