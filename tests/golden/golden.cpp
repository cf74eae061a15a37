/* Compares the pictures that the golden scenarios draw with their references.
 *
 *     golden --replay PROGRAM --assets ROOT --scenarios DIR --references DIR [--language CODE] [--report FILE] [--accept]
 *
 * A scenario names a picture by a comment "# picture NAME" right before an `art` command; its reference is NAME.txt, 64
 * lines of # and . in the folder of references. A picture that differs, one without a reference and a reference
 * without a picture all fail. --accept makes the references what the scenarios draw, the only way to change them. */
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace fs = std::filesystem;
using Picture = std::vector<std::string>;
using Pictures = std::map<std::string, Picture>;

static constexpr size_t PICTURE_LINES = 64;

struct Options {
    std::string replay, assets, scenarios, references, language = "en", report;
    bool accept = false;
};

[[noreturn]] static void fail(const std::string &reason)
{
    std::cerr << "golden: " << reason << '\n';
    std::exit(2);
}

static Options parse_options(int argc, char **argv)
{
    Options options;
    const std::map<std::string, std::string *> values = {
        {"--replay", &options.replay},         {"--assets", &options.assets},     {"--scenarios", &options.scenarios},
        {"--references", &options.references}, {"--language", &options.language}, {"--report", &options.report},
    };
    for (int i = 1; i < argc; i++) {
        const std::string word = argv[i];
        const auto value = values.find(word);
        if (word == "--accept")
            options.accept = true;
        else if (value != values.end() && i + 1 < argc)
            *value->second = argv[++i];
        else
            fail("unknown option or missing value: " + word);
    }
    if (options.replay.empty() || options.assets.empty() || options.scenarios.empty() || options.references.empty())
        fail("--replay, --assets, --scenarios and --references are needed");
    return options;
}

static std::vector<std::string> read_lines(const fs::path &file)
{
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/* A router root for one run, with links to the built assets; removed with its owner. */
class PrivateRoot {
public:
    explicit PrivateRoot(const fs::path &assets)
    {
        std::string name = fs::temp_directory_path() / "golden-XXXXXX";
        if (!mkdtemp(name.data()))
            fail("no temporary folder");
        path = name;
        fs::create_directories(path / "sbin");
        fs::create_directories(path / "tmp/lcd/network_status/speed");
        fs::create_directory_symlink(fs::absolute(assets) / "sbin/lcd_ml", path / "sbin/lcd_ml");
    }
    ~PrivateRoot() { fs::remove_all(path); }

    fs::path path;
};

static std::vector<std::string> play(const Options &options, const fs::path &scenario)
{
    const PrivateRoot root(options.assets);
    const fs::path script = root.path / "golden.scenario";
    /* On the first line, so that the others keep their numbers. */
    std::ofstream(script) << "nvram language_lcd " << options.language << "   "
                          << "\n"
                          << std::ifstream(scenario).rdbuf();
    const std::string command = options.replay + " --root " + root.path.string() + " --lines " + script.string();
    FILE *trace = popen(command.c_str(), "r");
    std::string text;
    for (char piece[4096]; size_t count = fread(piece, 1, sizeof piece, trace);)
        text.append(piece, count);
    if (pclose(trace) != 0)
        fail(scenario.string() + " does not play to its end");
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/* The number of the script line that a "@T line N" record announces; 0 for any other line of a trace. */
static size_t announced_line(const std::string &record)
{
    unsigned tick, line;
    return sscanf(record.c_str(), "@%u line %u", &tick, &line) == 2 ? line : 0;
}

static void collect(const Options &options, const fs::path &scenario, Pictures &pictures)
{
    static const std::string mark = "# picture ";
    const std::vector<std::string> script = read_lines(scenario);
    const std::vector<std::string> trace = play(options, scenario);
    for (size_t i = 0; i + PICTURE_LINES < trace.size(); i++) {
        /* The first script line is the one that was put in front. */
        const size_t line = announced_line(trace[i]);
        if (line < 3 || script[line - 2] != "art" || !script[line - 3].starts_with(mark))
            continue;
        const std::string name = script[line - 3].substr(mark.size());
        const auto art = trace.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        if (!pictures.emplace(name, Picture(art, art + PICTURE_LINES)).second)
            fail("two pictures are called " + name);
    }
}

static Pictures read_references(const fs::path &folder)
{
    Pictures references;
    if (fs::exists(folder))
        for (const auto &file : fs::directory_iterator(folder))
            references[file.path().stem()] = read_lines(file.path());
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
    if (options.report.empty())
        return;
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

int main(int argc, char **argv)
{
    const Options options = parse_options(argc, argv);
    Pictures pictures;
    std::vector<fs::path> scenarios;
    for (const auto &file : fs::directory_iterator(options.scenarios))
        if (file.path().extension() == ".scenario")
            scenarios.push_back(file.path());
    std::sort(scenarios.begin(), scenarios.end());
    for (const fs::path &scenario : scenarios)
        collect(options, scenario, pictures);
    const std::vector<Mismatch> mismatches = compare(pictures, read_references(options.references));
    if (options.accept) {
        accept(options.references, mismatches);
        return 0;
    }
    report(options, mismatches);
    std::cout << pictures.size() << " pictures, " << mismatches.size() << " mismatches\n";
    return mismatches.empty() ? 0 : 1;
}
