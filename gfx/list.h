/* The selection list: a full screen of items, the selected one inverted. */
#pragma once

struct WidgetState;

constexpr int MAX_LIST_ITEMS = 20;

/* Draws the list and applies `action` to it: ACTION_ENTER restores the stored selection (else the first item),
 * ACTION_UP and ACTION_DOWN move it, every action but ACTION_ENTER moves long texts on. `title` and `bottomLine` may be
 * null; `items` is null-terminated, null for none, at most 20 items. A null state is refused with a message. */
void drawSelect(int font, const char *title, const char *bottomLine, const char *const *items, WidgetState *state,
                int action);
