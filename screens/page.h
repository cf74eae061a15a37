/* Whole pictures made of one widget: clear, draw, show. Texts are in font 1; the arguments are the widgets'. */
#pragma once

#include "gfx/rowed_info.h"
#include "gfx/widget.h"

void draw_page(const char *title, const char *bottom_line, const char *body, WidgetState *state, int action);
void draw_list(const char *title, const char *bottom_line, const char *const *labels, WidgetState *state, int action);
void draw_table(const char *title, const char *bottom_line, const InfoRow *rows, WidgetState *state, int action);
