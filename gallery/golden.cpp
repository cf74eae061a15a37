/* Compares the pictures that the golden scenarios draw with their references.
 *
 *     golden --replay PROGRAM --assets ROOT --scenarios DIR --references DIR --report FILE [--accept]
 *
 * The reference of a picture is NAME.txt, 64 lines of # and . in the folder of references. A picture that differs, one
 * without a reference and a reference without a picture all fail. --accept makes the references what the scenarios
 * draw, the only way to change them. */
#include "gallery/pictures.h"

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace fs = std::filesystem;
using Pictures = std::map<std::string, Picture>;

struct Options {
    PictureSource source;
    std::string references, report;
    bool accept = false;
};

static Options read_options(int argc, char **argv)
{
    Options options;
    const std::map<std::string, std::string *> values = {{"--references", &options.references},
                                                         {"--report", &options.report}};
    for (const std::string &word : parse_options(argc, argv, options.source, values)) {
        if (word != "--accept")
            throw std::runtime_error("unknown option " + word);
        options.accept = true;
    }
    return options;
}

static Pictures read_references(const fs::path &folder)
{
    Pictures references;
    if (fs::exists(folder))
        for (const auto &file : fs::directory_iterator(folder)) {
            std::ifstream stream(file.path());
            for (std::string line; std::getline(stream, line);)
                references[file.path().stem()].push_back(line);
        }
    return references;
}

/* Where the pictures differ: '+' lit too much, '-' lit too little. */
static Picture difference(const Picture &expected, const Picture &got)
{
    Picture result = got;
    for (size_t row = 0; row < result.size(); row++)
        for (size_t column = 0; column < result[row].size(); column++) {
            const char wanted = row < expected.size() && column < expected[row].size() ? expected[row][column] : '.';
            const char drawn = result[row][column];
            result[row][column] = drawn == wanted ? (drawn == '#' ? 'o' : ' ') : (drawn == '#' ? '+' : '-');
        }
    return result;
}

static void print(const char *heading, const Picture &picture)
{
    std::cout << heading << '\n';
    for (const std::string &line : picture)
        std::cout << line << '\n';
}

static std::string html_picture(const char *heading, const Picture &picture)
{
    std::string html = std::string("<figure><figcaption>") + heading + "</figcaption><svg viewBox=\"0 0 128 64\">";
    const std::map<char, std::string> colours = {{'#', "#111"}, {'o', "#bbb"}, {'+', "#c00"}, {'-', "#06c"}};
    for (size_t y = 0; y < picture.size(); y++)
        for (size_t x = 0; x < picture[y].size(); x++)
            if (const auto colour = colours.find(picture[y][x]); colour != colours.end())
                html += "<rect x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
                        "\" width=\"1\" height=\"1\" fill=\"" + colour->second + "\"/>";
    return html + "</svg></figure>";
}

struct Mismatch {
    std::string name;
    Picture expected, got; // empty: there is none
};

static void report(const Options &options, const std::vector<Mismatch> &mismatches)
{
    for (const Mismatch &mismatch : mismatches) {
        const char *kind = mismatch.expected.empty() ? "has no reference"
                           : mismatch.got.empty()    ? "is a reference that no scenario draws"
                                                     : "differs (o same, + too much, - too little)";
        std::cout << "picture " << mismatch.name << ' ' << kind << '\n';
        if (!mismatch.expected.empty() && !mismatch.got.empty())
            print("difference:", difference(mismatch.expected, mismatch.got));
    }
    std::ofstream page(options.report);
    page << "<!doctype html><meta charset=\"utf-8\"><title>Golden pictures</title><style>body{font-family:sans-serif}"
            "figure{display:inline-block;margin:8px}svg{width:512px;background:#dde5d0;shape-rendering:crispEdges}"
            "</style>\n";
    for (const Mismatch &mismatch : mismatches)
        page << "<h2>" << mismatch.name << "</h2>" << html_picture("expected", mismatch.expected)
             << html_picture("got", mismatch.got)
             << html_picture("difference", difference(mismatch.expected, mismatch.got)) << '\n';
}

static std::vector<Mismatch> compare(const Pictures &pictures, const Pictures &references)
{
    std::vector<Mismatch> mismatches;
    for (const auto &[name, got] : pictures) {
        const auto reference = references.find(name);
        if (reference == references.end())
            mismatches.push_back({name, {}, got});
        else if (reference->second != got)
            mismatches.push_back({name, reference->second, got});
    }
    for (const auto &[name, expected] : references)
        if (!pictures.contains(name))
            mismatches.push_back({name, expected, {}});
    return mismatches;
}

static void accept(const fs::path &folder, const std::vector<Mismatch> &mismatches)
{
    fs::create_directories(folder);
    for (const Mismatch &mismatch : mismatches) {
        const fs::path file = folder / (mismatch.name + ".txt");
        if (mismatch.got.empty()) {
            fs::remove(file);
            std::cout << "removed " << mismatch.name << '\n';
            continue;
        }
        std::ofstream stream(file);
        for (const std::string &line : mismatch.got)
            stream << line << '\n';
        std::cout << (mismatch.expected.empty() ? "added " : "changed ") << mismatch.name << '\n';
    }
}

static int run(const Options &options)
{
    const Pictures pictures = draw_pictures(options.source, "en").pictures;
    const std::vector<Mismatch> mismatches = compare(pictures, read_references(options.references));
    if (options.accept) {
        accept(options.references, mismatches);
        return 0;
    }
    report(options, mismatches);
    std::cout << pictures.size() << " pictures, " << mismatches.size() << " mismatches\n";
    return mismatches.empty() ? 0 : 1;
}

int main(int argc, char **argv)
{
    try {
        return run(read_options(argc, argv));
    } catch (const std::exception &error) {
        std::cerr << "golden: " << error.what() << '\n';
        return 2;
    }
}
