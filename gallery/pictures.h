/* The pictures that golden scenarios draw.
 *
 * A scenario names a picture by a comment right before an `art` command: "# picture NAME", or "# page NAME" for a page
 * of text, which must look the same at its next redraw. "# pages NAME" draws a text page by page to its end: NAME-1,
 * NAME-2 and so on, as many as the language has. */
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/* 64 lines of # and . */
using Picture = std::vector<std::string>;

constexpr size_t PICTURE_LINES = 64;

struct PictureSource {
    std::string replay;    // the program panel-replay
    std::string assets;    // the built router root with the language packs and bitmaps
    std::string scenarios; // folder of the scenarios
};

/* The options of a program that draws: those of the source and its own `values`, each "--name VALUE" and needed. The
 * words that are none of them. Throws std::runtime_error when one is missing. */
std::vector<std::string> parse_options(int argc, char **argv, PictureSource &source,
                                       std::map<std::string, std::string *> values);

/* What the scenarios draw in one language. */
struct PictureSet {
    std::map<std::string, Picture> pictures;
    std::map<std::string, Picture> redrawn; // the pages again, after their next redraw
    std::vector<std::string> messages;      // all that the daemon printed meanwhile
};

/* Plays all scenarios in the language of nvram code `language`, each on a router root of its own. Throws
 * std::runtime_error when one does not play to its end or two pictures have one name. */
PictureSet draw_pictures(const PictureSource &source, const std::string &language);
