/* What a redraw of a list costs beyond the system calls that it cannot do without. */
#include "bench/bench_platform.h"
#include "bench/figures.h"
#include "bench/router_folder.h"
#include "bench/system_calls.h"
#include "core/actions.h"
#include "gfx/bitmap.h"
#include "gfx/glyph.h"
#include "gfx/utf8.h"
#include "lang/language.h"
#include "screens/page.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

static constexpr double MOST_AGAINST_BARE_CALLS = 1.25;
static constexpr double MOST_DRAWING_MICROSECONDS = 10;

static constexpr const char *TITLE = "Wireless radio";
static constexpr const char *BOTTOM_LINE = "\x11: back, OK: select";
static constexpr const char *LONG_ROW = "A neighbour's network with a long name 7";

struct Scene {
    const char *name;
    const char *rows[4];
    int rounds; // of its marquees
};

static const Scene plain_list = {
    "list of 81 characters", {"Wireless settings", "Switch radio off", "About the radio", nullptr}, 1000};
static const Scene marquee_list = {"three 40-character marquees", {LONG_ROW, LONG_ROW, LONG_ROW, nullptr}, 25};

/* The calls of each redraw in one round of a list's marquees; a list without one has a round of one redraw. */
using Round = std::vector<std::vector<RouterCall>>;

static void redraw(const Scene &scene, int action)
{
    static WidgetState state;
    draw_list(TITLE, BOTTOM_LINE, scene.rows, &state, action);
}

static std::vector<uint8_t> picture()
{
    return {std::begin(screenBuffer), std::end(screenBuffer)};
}

static Round record_round(const Scene &scene)
{
    Round round;
    redraw(scene, ACTION_ENTER);
    const std::vector<uint8_t> start = picture();
    do {
        round.push_back(recorded_calls([&] { redraw(scene, ACTION_TICK); }));
        bench_take_frames();
    } while (picture() != start);
    return round;
}

template <typename Code> static double microseconds(Code code)
{
    const double start = processor_time();
    code();
    return (processor_time() - start) * 1e6;
}

/* The two loops take turns redraw by redraw, so that a busy machine slows both down alike. */
static void compare_with_bare_calls(const Scene &scene, const Round &round)
{
    std::vector<double> drawn, bare, ratios;
    for (int i = 0; i < scene.rounds; i++) {
        double drawing = 0, calling = 0;
        for (const std::vector<RouterCall> &calls : round) {
            drawing += microseconds([&] { redraw(scene, ACTION_TICK); });
            bench_take_frames();
            calling += microseconds([&] { make_bare_calls(calls); });
            bench_take_frames();
        }
        drawn.push_back(drawing / static_cast<double>(round.size()));
        bare.push_back(calling / static_cast<double>(round.size()));
        ratios.push_back(drawing / calling);
    }
    const std::string name = scene.name;
    print_figure(name + ": processor time of a redraw", median(drawn), "us");
    print_figure(name + ": its system calls alone", median(bare), "us");
    print_figure(name + ": the one against the other", median(ratios), "times", MOST_AGAINST_BARE_CALLS);
}

static void count_calls(const Scene &scene, const Round &round)
{
    double loads = 0;
    for (const std::vector<RouterCall> &calls : round)
        loads += static_cast<double>(std::count_if(calls.begin(), calls.end(), [](const RouterCall &call) {
            return call.kind == RouterCall::OPEN && call.path.starts_with("sbin/");
        }));
    print_figure(scene.name + std::string(": glyph loads"), loads / static_cast<double>(round.size()), "");

    const std::vector<long> real = trace_system_calls([&] { redraw(scene, ACTION_TICK); });
    const std::vector<long> bare = trace_system_calls([&] { make_bare_calls(round.front()); });
    const auto differing = std::mismatch(real.begin(), real.end(), bare.begin(), bare.end());
    print_figure(scene.name + std::string(": system calls that the bare loop lacks"),
                 static_cast<double>(real.end() - differing.first), "", 0);
    bench_take_frames();
}

struct PlacedGlyph {
    int x, y;
    std::unique_ptr<Bitmap, decltype(&freeBitmap)> bitmap;
};

static void place_line(std::vector<PlacedGlyph> &glyphs, int x, int y, const char *text)
{
    for (; *text; text = utf_8_str_forward_one(text)) {
        Utf8Char character, next;
        utf_8_get_char(text, 0, &character);
        utf_8_get_char(text, 1, &next);
        char name[GLYPH_NAME_BYTES];
        Bitmap *bitmap = loadBitmap(getGlyphName(&character, 1, name));
        glyphs.push_back({x, y, {bitmap, freeBitmap}});
        x += bitmap->width + (isBreakCharacter(&character) || isBreakCharacter(&next) ? 0 : 1);
    }
}

/* The plain list as the widget lays it out in glyphs 12 pixels high. */
static std::vector<PlacedGlyph> place_plain_list()
{
    std::vector<PlacedGlyph> glyphs;
    place_line(glyphs, 0, 63, TITLE);
    place_line(glyphs, 64 - getStringWidth(1, BOTTOM_LINE, 0) / 2, 11, BOTTOM_LINE);
    for (int row = 0; plain_list.rows[row]; row++)
        place_line(glyphs, ROW_LEFT, 49 - 12 * row, plain_list.rows[row]);
    return glyphs;
}

static void draw_placed(const std::vector<PlacedGlyph> &glyphs)
{
    clearScreenBuffer();
    for (const PlacedGlyph &glyph : glyphs)
        drawBitmap(DRAW_NORMAL, glyph.x, glyph.y, glyph.bitmap->height, glyph.bitmap->width, glyph.bitmap->bits);
    drawLine(0, 50, LCD_WIDTH);
    drawLine(0, 11, LCD_WIDTH);
    setReverseDisplay(0, 48, 12, LCD_WIDTH);
    setReverseDisplay(0, LCD_HEIGHT - 1, LCD_HEIGHT, LCD_WIDTH);
}

/* False when what is drawn is not the list. */
static bool measure_drawing()
{
    redraw(plain_list, ACTION_ENTER);
    bench_take_frames();
    const std::vector<uint8_t> list = picture();
    const std::vector<PlacedGlyph> glyphs = place_plain_list();
    static constexpr int DRAWINGS = 1000;
    std::vector<double> times;
    for (int i = 0; i < 50; i++)
        times.push_back(microseconds([&] {
                            for (int drawing = 0; drawing < DRAWINGS; drawing++)
                                draw_placed(glyphs);
                        }) /
                        DRAWINGS);
    /* The fastest: there is no second loop that a busy machine would slow down with this one. */
    print_figure(plain_list.name + std::string(": drawing alone, glyphs in memory"), quantile(times, 0), "us",
                 MOST_DRAWING_MICROSECONDS);
    return picture() == list;
}

int main()
{
    /* As the daemon's own: a message would be a system call too many. */
    setvbuf(stdout, nullptr, _IOLBF, 0);
    const RouterFolder router;
    bench_open_root(router.path());
    load_language(0);
    for (const Scene *scene : {&plain_list, &marquee_list}) {
        const Round round = record_round(*scene);
        compare_with_bare_calls(*scene, round);
        count_calls(*scene, round);
    }
    if (!measure_drawing()) {
        fprintf(stderr, "bench-redraw: the glyphs in memory do not draw the list\n");
        return 2;
    }
    return figures_status();
}
