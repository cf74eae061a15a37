/* What screens have in common to draw. Texts are in FONT_TEXT; actions and scroll states are those of the widgets. */
#pragma once

#include "gfx/rowed_info.h"
#include "gfx/widget.h"
#include "lang/text_id.h"

#include <array>

struct ScrollState;

/* Whole pictures made of one widget: clear, draw, show. */
void draw_page(const char *title, const char *bottom_line, const char *body, WidgetState *state, int action);
void draw_list(const char *title, const char *bottom_line, const char *const *labels, WidgetState *state, int action);
void draw_table(const char *title, const char *bottom_line, const InfoRow *rows, WidgetState *state, int action);

using Title = std::array<char, 128>;

/* The title of a setting that is on or off, which stands at the right end. */
void format_on_off_title(Title &title, TextId name, bool on);

/* The foot of the status pictures: the row of its rule, the rule, and the line below it. */
int status_rule_row();
void draw_status_rule();
void draw_status_bottom_line(int action, ScrollState *scroll);
