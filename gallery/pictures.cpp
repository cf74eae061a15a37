#include "gallery/pictures.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

static constexpr int MOST_PAGES = 9; // drawn of a text; the last one must be one of the others again

std::vector<std::string> parse_options(int argc, char **argv, PictureSource &source,
                                       std::map<std::string, std::string *> values)
{
    values.insert({{"--replay", &source.replay}, {"--assets", &source.assets}, {"--scenarios", &source.scenarios}});
    std::vector<std::string> others;
    for (int i = 1; i < argc; i++) {
        const auto value = values.find(argv[i]);
        if (value != values.end() && i + 1 < argc)
            *value->second = argv[++i];
        else
            others.push_back(argv[i]);
    }
    for (const auto &[name, value] : values)
        if (value->empty())
            throw std::runtime_error(name + " is needed");
    return others;
}

/* A router root for one run, with a link to the built assets; removed with its owner. */
class PrivateRoot
{
public:
    explicit PrivateRoot(const fs::path &assets)
    {
        std::string name = fs::temp_directory_path() / "golden-XXXXXX";
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no temporary folder");
        path = name;
        fs::create_directories(path / "sbin");
        fs::create_directories(path / "tmp/lcd/network_status/speed");
        fs::create_directory_symlink(fs::absolute(assets) / "sbin/lcd_ml", path / "sbin/lcd_ml");
    }
    ~PrivateRoot() { fs::remove_all(path); }
    PrivateRoot(const PrivateRoot &) = delete;
    PrivateRoot &operator=(const PrivateRoot &) = delete;

    fs::path path;
};

static std::vector<std::string> split_lines(std::istream &stream)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/* What a script line asks for, besides being played. */
struct Request {
    std::string picture; // name of the picture that the line draws
    bool redrawn;        // it is the second one of a page
};

/* A scenario with all that its pictures need. */
struct Script {
    std::vector<std::string> lines;
    std::vector<Request> requests;  // of each line
    std::vector<std::string> texts; // drawn page by page
};

static void add(Script &script, const std::string &line, const Request &request = {})
{
    script.lines.push_back(line);
    script.requests.push_back(request);
}

static void add_page(Script &script, const std::string &name)
{
    add(script, "art", {name, false});
    add(script, "pass 6"); // the period of a redraw
    add(script, "art", {name, true});
}

static std::string page_name(const std::string &text, int page)
{
    return text + "-" + std::to_string(page);
}

static void add_pages(Script &script, const std::string &text)
{
    for (int page = 1; page <= MOST_PAGES; page++) {
        add_page(script, page_name(text, page));
        add(script, "key down");
        add(script, "pass");
    }
    script.texts.push_back(text);
}

static Script prepare(const fs::path &scenario, const std::string &language)
{
    static const std::string picture_mark = "# picture ", page_mark = "# page ", pages_mark = "# pages ";
    Script script;
    add(script, "nvram language_lcd " + language);
    std::ifstream stream(scenario);
    std::string previous;
    for (const std::string &line : split_lines(stream)) {
        if (line != "art")
            add(script, line);
        else if (previous.starts_with(picture_mark))
            add(script, line, {previous.substr(picture_mark.size()), false});
        else if (previous.starts_with(page_mark))
            add_page(script, previous.substr(page_mark.size()));
        else if (previous.starts_with(pages_mark))
            add_pages(script, previous.substr(pages_mark.size()));
        previous = line;
    }
    return script;
}

static std::vector<std::string> play(const PictureSource &source, const fs::path &scenario, const Script &script)
{
    const PrivateRoot root(source.assets);
    const fs::path file = root.path / "golden.scenario";
    std::ofstream stream(file);
    for (const std::string &line : script.lines)
        stream << line << '\n';
    stream.close();
    const std::string command = source.replay + " --root " + root.path.string() + " --lines " + file.string();
    FILE *pipe = popen(command.c_str(), "r");
    std::string trace;
    char piece[4096];
    while (const size_t count = pipe ? fread(piece, 1, sizeof piece, pipe) : 0)
        trace.append(piece, count);
    if (!pipe || pclose(pipe) != 0)
        throw std::runtime_error(scenario.string() + " does not play to its end");
    std::istringstream lines(trace);
    return split_lines(lines);
}

/* The number of the script line that a "@T line N" record announces; 0 for any other line of a trace. */
static size_t announced_line(const std::string &record)
{
    std::istringstream stream(record);
    char mark;
    unsigned tick;
    size_t line;
    std::string word;
    return stream >> mark >> tick >> word >> line && mark == '@' && word == "line" ? line : 0;
}

static void collect(const Script &script, const std::vector<std::string> &trace, PictureSet &set)
{
    for (size_t i = 0; i < trace.size(); i++) {
        const size_t line = announced_line(trace[i]);
        if (line == 0) {
            if (!trace[i].starts_with('@'))
                set.messages.push_back(trace[i]);
            continue;
        }
        const Request &request = script.requests[line - 1];
        if (request.picture.empty())
            continue;
        const auto art = trace.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        auto &pictures = request.redrawn ? set.redrawn : set.pictures;
        if (!pictures.emplace(request.picture, Picture(art, art + PICTURE_LINES)).second)
            throw std::runtime_error("two pictures are called " + request.picture);
        i += PICTURE_LINES;
    }
}

/* A text's pages come round again after the last one, or that stays: what was drawn from then on is dropped. */
static void drop_repeated_pages(const std::string &text, PictureSet &set)
{
    std::set<Picture> seen;
    bool over = false;
    for (int page = 1; page <= MOST_PAGES; page++) {
        const std::string name = page_name(text, page);
        over = over || !seen.insert(set.pictures.at(name)).second;
        if (over) {
            set.pictures.erase(name);
            set.redrawn.erase(name);
        }
    }
    if (!over)
        throw std::runtime_error(text + " has more than " + std::to_string(MOST_PAGES - 1) + " pages");
}

PictureSet draw_pictures(const PictureSource &source, const std::string &language)
{
    std::vector<fs::path> scenarios;
    for (const auto &file : fs::directory_iterator(source.scenarios))
        if (file.path().extension() == ".scenario")
            scenarios.push_back(file.path());
    std::sort(scenarios.begin(), scenarios.end());
    PictureSet set;
    for (const fs::path &scenario : scenarios) {
        const Script script = prepare(scenario, language);
        collect(script, play(source, scenario, script), set);
        for (const std::string &text : script.texts)
            drop_repeated_pages(text, set);
    }
    return set;
}
