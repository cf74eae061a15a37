#include "gfx/shapes.h"

#include "gfx/frame_buffer.h"

#include <algorithm>
#include <cstdio>
#include <utility>

constexpr int QUADRANT_DEGREES = 90;
constexpr int MAX_ANGLE = 359;

struct Fraction {
    int32_t numerator;
    int32_t denominator;
};

// clang-format off
/* Tangents of 0 to 90 degrees, five a line */
constexpr Fraction tanTable[] = {
    {0, 1}, {100000, 5728996}, {3492, 100000}, {5241, 100000}, {6993, 100000},
    {8749, 100000}, {10510, 100000}, {12278, 100000}, {14054, 100000}, {15838, 100000},
    {17633, 100000}, {19438, 100000}, {21256, 100000}, {23087, 100000}, {24933, 100000},
    {26795, 100000}, {28675, 100000}, {30573, 100000}, {32492, 100000}, {34433, 100000},
    {36397, 100000}, {38386, 100000}, {40403, 100000}, {42447, 100000}, {44523, 100000},
    {46631, 100000}, {48773, 100000}, {50953, 100000}, {53171, 100000}, {55431, 100000},
    {57735, 100000}, {60086, 100000}, {62487, 100000}, {64941, 100000}, {67451, 100000},
    {70021, 100000}, {72654, 100000}, {75355, 100000}, {78129, 100000}, {80978, 100000},
    {83910, 100000}, {86929, 100000}, {90040, 100000}, {93252, 100000}, {96569, 100000},
    {1, 1}, {103553, 100000}, {107237, 100000}, {111061, 100000}, {115037, 100000},
    {119175, 100000}, {123490, 100000}, {127994, 100000}, {132704, 100000}, {137638, 100000},
    {142815, 100000}, {148256, 100000}, {153986, 100000}, {160033, 100000}, {166428, 100000},
    {173205, 100000}, {180405, 100000}, {188073, 100000}, {196261, 100000}, {205030, 100000},
    {214451, 100000}, {224604, 100000}, {235585, 100000}, {247509, 100000}, {260509, 100000},
    {274748, 100000}, {290421, 100000}, {307768, 100000}, {327085, 100000}, {348741, 100000},
    {373205, 100000}, {401078, 100000}, {433148, 100000}, {470463, 100000}, {514455, 100000},
    {567128, 100000}, {631375, 100000}, {711537, 100000}, {814435, 100000}, {951436, 100000},
    {1143005, 100000}, {1430067, 100000}, {1908114, 100000}, {2863625, 100000}, {5728996, 100000},
    {5729578, 1000},
};
// clang-format on

/* Which way u and v, the offsets from the centre, point in each quadrant */
constexpr struct {
    int x;
    int y;
} quadrantSigns[] = {{-1, 1}, {1, 1}, {1, -1}, {-1, -1}};

int compareFraction(int a, int b, int c, int d)
{
    const int64_t left = b == d ? a : int64_t{a} * d;
    const int64_t right = b == d ? c : int64_t{c} * b;
    return (left > right) - (left < right);
}

void drawOctantLine(int64_t x0, int64_t y0, int64_t x1, int64_t y1, int octant, int mode)
{
    int64_t error = x0 - x1;
    int64_t y = y0;
    for (int64_t x = x0; x <= x1; x++) {
        /* Octants 2 and 3 fall as far as 0 and 1 rise. */
        const int along = static_cast<int>(x);
        const int across = static_cast<int>(octant < 2 ? y : 2 * y0 - y);
        if (octant % 2 == 0)
            drawDot(mode, along, across);
        else
            drawDot(mode, across, along);
        error += 2 * (y1 - y0);
        if (error >= 0) {
            y++;
            error -= 2 * (x1 - x0);
        }
    }
}

void drawArbitraryLine(int x1, int y1, int x2, int y2, int mode)
{
    if ((mode != DRAW_NORMAL && mode != DRAW_REVERSE) || (x1 == x2 && y1 == y2))
        return;
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const int64_t width = int64_t{x2} - x1;
    const int64_t rise = int64_t{y2} - y1;
    if (rise >= 0 && rise <= width)
        drawOctantLine(x1, y1, x2, y2, 0, mode);
    else if (rise > width)
        drawOctantLine(y1, x1, y2, x2, 1, mode);
    else if (-rise <= width)
        drawOctantLine(x1, y1, x2, y1 - rise, 2, mode);
    else
        drawOctantLine(y2, x2, y1, x2 + width, 3, mode);
}

/* Moves the end of an arc on to (x, y), drawn in the upper half, when it is a better one. */
static void keepEnd(int quadrant, int x, int y, int *endX, int *endY)
{
    /* The first quadrant is traced from its end to its start, the second from start to end. */
    if ((quadrant == 0 && (x > *endX || y > *endY)) || (quadrant == 1 && (x > *endX || y < *endY))) {
        *endX = x;
        *endY = y;
    }
}

/* Draws the arc of one quadrant that lies up to `angle` degrees, measured from the horizontal axis, in the even
 * quadrants, and from there on in the odd ones. */
static void drawQuadrant(int radius, int x0, int y0, int quadrant, int angle, int *endX, int *endY)
{
    const Fraction &limit = tanTable[angle];
    int u = 0;
    int v = radius;
    int d = 2 * (1 - radius);
    while (v >= 0) {
        const int order = compareFraction(v, u, limit.numerator, limit.denominator);
        if (quadrant % 2 == 0 ? order <= 0 : order >= 0) {
            const int x = x0 + quadrantSigns[quadrant].x * u;
            const int y = y0 + quadrantSigns[quadrant].y * v;
            drawDot(DRAW_NORMAL, x, y);
            if (endX && endY)
                keepEnd(quadrant, x, y, endX, endY);
        }
        const bool across = d <= 0 || 2 * (d - u) - 1 <= 0;
        const bool down = d >= 0 || 2 * (d + v) - 1 >= 0;
        if (across) {
            u++;
            d += 2 * u + 1;
        }
        if (down) {
            v--;
            d += 1 - 2 * v;
        }
    }
}

/* Whether the centre and the west point of a circle are on the screen. */
static bool isCircleOnScreen(int radius, int x0, int y0)
{
    return isOnScreen(x0, y0, 1, 1) && isOnScreen(int64_t{x0} - radius, y0, 1, 1);
}

void drawBresenhamCircle(int radius, int x0, int y0, int angle, int *endX, int *endY)
{
    if (!isCircleOnScreen(radius, x0, y0)) {
        printf("drawBresenhamCircle return, x0 %d, y0 %d, radius %d\n", x0, y0, radius);
        return;
    }
    if (angle < 1 || angle > MAX_ANGLE) {
        printf("drawBresenhamCircle return, angle %d\n", angle);
        return;
    }
    for (int quadrant = 0; quadrant * QUADRANT_DEGREES < angle; quadrant++) {
        const int degrees = std::min(angle - quadrant * QUADRANT_DEGREES, QUADRANT_DEGREES);
        const int limit = quadrant % 2 == 0 ? degrees : QUADRANT_DEGREES - degrees;
        drawQuadrant(radius, x0, y0, quadrant, limit, endX, endY);
    }
}

void drawCircle(int radius, int x0, int y0, int angle)
{
    drawBresenhamCircle(radius, x0, y0, angle, nullptr, nullptr);
}

void drawBresenhamSector(int innerRadius, int outerRadius, int x0, int y0, int angle)
{
    if (!isCircleOnScreen(outerRadius, x0, y0) || innerRadius == outerRadius || angle == 0) {
        printf("drawBresenhamSector return\n");
        return;
    }
    if (angle < 0)
        return;
    drawArbitraryLine(x0 - outerRadius, y0, static_cast<int>(int64_t{x0} - innerRadius), y0, DRAW_NORMAL);
    Seed outerEnd = {};
    Seed innerEnd = {};
    drawBresenhamCircle(outerRadius, x0, y0, angle, &outerEnd.x, &outerEnd.y);
    drawBresenhamCircle(innerRadius, x0, y0, angle, &innerEnd.x, &innerEnd.y);
    drawArbitraryLine(outerEnd.x, outerEnd.y, innerEnd.x, innerEnd.y, DRAW_NORMAL);

    const Seed inside = {x0 - outerRadius + 1, y0 + 1};
    SeedStack stack = {};
    initSeedStack(&stack);
    scanLineSeedFill(&inside, &stack);
}

void initSeedStack(SeedStack *stack)
{
    stack->top = -1;
}

void pushSeed(const Seed *seed, SeedStack *stack)
{
    if (!seed || !stack)
        puts("Seed or seedStack is empty");
    else if (stack->top == SEED_STACK_SIZE - 1)
        puts("The seed stack is full");
    else
        stack->seeds[++stack->top] = *seed;
}

void popSeed(Seed *seed, SeedStack *stack)
{
    if (!seed || !stack)
        puts("Seed or seedStack is empty");
    else if (isSeedStackEmpty(stack))
        puts("The seed stack is empty");
    else
        *seed = stack->seeds[stack->top--];
}

bool isSeedStackEmpty(const SeedStack *stack)
{
    return !stack || stack->top == -1;
}

/* Draws the clear pixels that follow (x, y) in the direction of `step`. Returns the column of the last one. */
static int fillRow(int x, int y, int step)
{
    while (!getDot(x + step, y)) {
        x += step;
        drawDot(DRAW_NORMAL, x, y);
    }
    return x;
}

/* Pushes the last pixel of each run of clear ones among the columns left to right of row y. */
static void pushRuns(int left, int right, int y, SeedStack *stack)
{
    for (int x = left; x <= right; x++) {
        if (!getDot(x, y) && (x == right || getDot(x + 1, y))) {
            const Seed seed = {x, y};
            pushSeed(&seed, stack);
        }
    }
}

void scanLineSeedFill(const Seed *seed, SeedStack *stack)
{
    pushSeed(seed, stack);
    while (!isSeedStackEmpty(stack)) {
        Seed next;
        popSeed(&next, stack);
        drawDot(DRAW_NORMAL, next.x, next.y);
        const int right = fillRow(next.x, next.y, 1);
        const int left = fillRow(next.x, next.y, -1);
        pushRuns(left, right, next.y + 1, stack);
        pushRuns(left, right, next.y - 1, stack);
    }
}
