/* The table: rows of a label at the left and a value at the right, scrolled by the row. */
#pragma once

struct WidgetState;

struct InfoRow {
    char label[101];
    char value[101];
    char prefix[101]; // stands before the value
};

/* Draws the table, at most 254 rows, and applies `action`: ACTION_ENTER shows its first row, ACTION_UP and ACTION_DOWN
 * scroll by a row, any other redraws and moves long labels on. `rows` ends with a row of three empty texts and may be
 * null, as may `title` and `bottomLine`. A null state is refused with a message. */
void drawRowedInfo(int font, const char *title, const char *bottomLine, const InfoRow *rows, WidgetState *state,
                   int action);
