/* Draws every screen in every language: a contact sheet for each, and a page that shows them side by side.
 *
 *     gallery --replay PROGRAM --assets ROOT --scenarios DIR --output DIR [CODE...]
 *
 * Without CODEs (nvram codes: "de"), all nine languages. Fails, after writing all sheets, when the drawing code refused
 * a text, a glyph was missing, or a page of text changed at its next redraw. */
#include "gallery/contact_sheet.h"
#include "gallery/pictures.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>
#include <stdexcept>

namespace fs = std::filesystem;

struct Options {
    PictureSource source;
    std::string output;
    std::vector<std::string> languages;
};

static const std::vector<std::string> all_languages = {"en", "es", "fr", "de", "it", "du", "tc", "jp", "kr"};

/* What the daemon says of a list that is meant to be empty. */
static const std::string expected_message = "drawRowedInfo return, totalContentLineNum 0";

static Options read_options(int argc, char **argv)
{
    Options options;
    options.languages = parse_options(argc, argv, options.source, {{"--output", &options.output}});
    for (const std::string &word : options.languages)
        if (std::find(all_languages.begin(), all_languages.end(), word) == all_languages.end())
            throw std::runtime_error("unknown option or language " + word);
    if (options.languages.empty())
        options.languages = all_languages;
    return options;
}

/* Names what is wrong with a language's pictures; false when something is. */
static bool check(const std::string &language, const PictureSet &set)
{
    bool good = true;
    for (const std::string &message : std::set<std::string>(set.messages.begin(), set.messages.end()))
        if (message != expected_message) {
            std::cout << language << ": the daemon says: " << message << '\n';
            good = false;
        }
    for (const auto &[name, redrawn] : set.redrawn)
        if (redrawn != set.pictures.at(name)) {
            std::cout << language << ": the page " << name << " changes at its redraw\n";
            good = false;
        }
    return good;
}

/* Every name of a picture; a text has more pages in one language than in another. */
static std::set<std::string> all_names(const std::map<std::string, PictureSet> &sets)
{
    std::set<std::string> names;
    for (const auto &[language, set] : sets)
        for (const auto &[name, picture] : set.pictures)
            names.insert(name);
    return names;
}

/* A picture for each of `names`; an empty one for a name that the set has not. */
static std::vector<Picture> in_order(const PictureSet &set, const std::set<std::string> &names)
{
    std::vector<Picture> pictures;
    for (const std::string &name : names) {
        const auto found = set.pictures.find(name);
        pictures.push_back(found == set.pictures.end() ? Picture() : found->second);
    }
    return pictures;
}

/* A row for each picture, a column for each language; the sheets serve as the images. */
static void write_page(const Options &options, const std::set<std::string> &names)
{
    std::ofstream page(options.output + "/index.html");
    page << "<!doctype html>\n<html lang=\"en\"><meta charset=\"utf-8\"><title>The panel in all languages</title>\n"
         << "<style>body{font-family:sans-serif}td{width:" << 128 * SHEET_SCALE << "px;height:" << 64 * SHEET_SCALE
         << "px;border:1px solid #888}th{text-align:left}\n";
    for (const std::string &language : options.languages)
        page << "td." << language << "{background-image:url(" << language << ".png)}\n";
    page << "</style>\n<table><tr><th></th>";
    for (const std::string &language : options.languages)
        page << "<th>" << language << "</th>";
    int index = 0;
    for (const std::string &name : names) {
        const int x = SHEET_GAP + index % SHEET_COLUMNS * CELL_WIDTH,
                  y = SHEET_GAP + index / SHEET_COLUMNS * CELL_HEIGHT;
        page << "</tr>\n<tr style=\"--at:-" << x << "px -" << y << "px\"><th>" << name << "</th>";
        for (const std::string &language : options.languages)
            page << "<td class=\"" << language << "\" style=\"background-position:var(--at)\"></td>";
        index++;
    }
    page << "</tr></table></html>\n";
}

static int run(const Options &options)
{
    fs::create_directories(options.output);
    bool good = true;
    std::map<std::string, PictureSet> sets;
    for (const std::string &language : options.languages) {
        sets[language] = draw_pictures(options.source, language);
        good = check(language, sets[language]) && good;
    }
    const std::set<std::string> names = all_names(sets);
    for (const auto &[language, set] : sets)
        write_contact_sheet(in_order(set, names), options.output + "/" + language + ".png");
    write_page(options, names);
    std::cout << names.size() << " pictures in " << options.languages.size() << " languages\n";
    return good ? 0 : 1;
}

int main(int argc, char **argv)
{
    try {
        return run(read_options(argc, argv));
    } catch (const std::exception &error) {
        std::cerr << "gallery: " << error.what() << '\n';
        return 2;
    }
}
