/* Lines, arcs and ring sectors, drawn pixel by pixel: pixels off the screen are refused one by one as drawDot does.
 *
 * Angles are whole degrees, clockwise from the west point of a circle (the point left of its centre): 90 is the top
 * point, 180 the east point, 270 the bottom point. */
#pragma once

#include <cstdint>

/* A line between two points, the same pixels in either direction; nothing when they are one point. `mode` is
 * DRAW_NORMAL or DRAW_REVERSE; any other draws nothing. Bresenham, "Algorithm for computer control of a digital
 * plotter", IBM Systems Journal 4 (1965). */
void drawArbitraryLine(int x1, int y1, int x2, int y2, int mode);

/* A line of slope 0 to 1 in a frame of its own (x0 <= x1), mapped to the screen by `octant`: 0 as it is, 1 with x and y
 * exchanged, 2 mirrored at the row y0, 3 mirrored and then exchanged. */
void drawOctantLine(int64_t x0, int64_t y0, int64_t x1, int64_t y1, int octant, int mode);

/* The arc around (x0, y0) from the west point through `angle` degrees, 1..359; refused with a message when the centre
 * or the west point lies off the screen. When `endX` and `endY` are given, (0, 0) at first, they receive the end of the
 * arc, for angles above 180 the east point. Bresenham, "A linear algorithm for incremental digital display of circular
 * arcs", Communications of the ACM 20 (1977). */
void drawBresenhamCircle(int radius, int x0, int y0, int angle, int *endX, int *endY);

/* The same arc without its end point. */
void drawCircle(int radius, int x0, int y0, int angle);

/* The filled band between two arcs from the west point through `angle` degrees; refused with a message when the angle
 * is 0, the radii are equal, or the centre or the west point lies off the screen, silently when the angle is negative.
 * The outer radius must be the larger one. */
void drawBresenhamSector(int innerRadius, int outerRadius, int x0, int y0, int angle);

constexpr int SEED_STACK_SIZE = 200;

/* A pixel from which an area is filled. */
struct Seed {
    int32_t x;
    int32_t y;
};

struct SeedStack {
    Seed seeds[SEED_STACK_SIZE];
    int32_t top; // index of the topmost seed, -1 when empty
};

/* Fills the clear pixels that are connected to `seed` by their sides, up to set pixels and the screen's edges, row by
 * row (Smith, "Tint fill", SIGGRAPH 1979). A region that needs more seeds than the stack holds is filled in part, with
 * a message. */
void scanLineSeedFill(const Seed *seed, SeedStack *stack);

/* Empties a stack. */
void initSeedStack(SeedStack *stack);

/* Puts a seed on the stack. On a full stack, or with a null argument, a message instead. */
void pushSeed(const Seed *seed, SeedStack *stack);

/* Takes the topmost seed off the stack into `seed`. On an empty stack, or with a null argument, a message instead. */
void popSeed(Seed *seed, SeedStack *stack);

/* Whether the stack holds no seed; a null stack holds none. */
bool isSeedStackEmpty(const SeedStack *stack);

/* The sign of a / b - c / d: -1, 0 or 1. None is negative; a denominator of 0 stands for infinity. */
int compareFraction(int a, int b, int c, int d);
