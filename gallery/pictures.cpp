#include "gallery/pictures.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

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
    std::vector<Request> requests; // of each line
};

static Script prepare(const fs::path &scenario, const std::string &language)
{
    static const std::string picture_mark = "# picture ", page_mark = "# page ";
    Script script;
    const auto add = [&script](const std::string &line, const Request &request = {}) {
        script.lines.push_back(line);
        script.requests.push_back(request);
    };
    add("nvram language_lcd " + language);
    std::ifstream stream(scenario);
    std::string previous;
    for (const std::string &line : split_lines(stream)) {
        if (line != "art") {
            add(line);
        } else if (previous.starts_with(picture_mark)) {
            add(line, {previous.substr(picture_mark.size()), false});
        } else if (previous.starts_with(page_mark)) {
            const std::string name = previous.substr(page_mark.size());
            add(line, {name, false});
            add("pass 6"); // the period of a redraw
            add(line, {name, true});
        }
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
    unsigned tick, line;
    return sscanf(record.c_str(), "@%u line %u", &tick, &line) == 2 ? line : 0;
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
    }
    return set;
}
