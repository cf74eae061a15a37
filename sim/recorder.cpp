#include "sim/recorder.h"

#include "sim/files.h"
#include "sim/settings.h"
#include "sim/text.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace fs = std::filesystem;

namespace sim {

static constexpr const char *ACTION_PATH = "/tmp/lcd/lcd_action";
static constexpr const char *EVENT_PATH = "/tmp/lcd/lcd_event";
static constexpr const char *LOCK_PATH = "/tmp/lcd/lcd_wp";
static constexpr const char *CLOCK_PATH = "/run/clock";
static constexpr const char *INTERFACES_PATH = "/etc/interfaces";
static constexpr const char *memory_folders[] = {"tmp", "var", "proc"};

static constexpr size_t LONGEST_SCRIPT = 16 << 20; // bytes
static constexpr uintmax_t LARGEST_FILE = 1 << 16;

/* `text` as a word of a script. */
static std::string word(const std::string &text)
{
    const bool is_plain = !text.empty() && text[0] != '#' && std::ranges::all_of(text, [](char c) {
        return c > ' ' && c <= '~' && c != '"' && c != '\\';
    });
    return is_plain ? text : "\"" + escaped(text) + "\"";
}

static std::string quoted(const std::string &text)
{
    return "\"" + escaped(text) + "\"";
}

std::string file_line(const std::string &path, const std::optional<std::string> &content)
{
    return content ? "file " + word(path) + " " + quoted(*content) : "rm " + word(path);
}

void Recorder::begin(const fs::path &root, uint64_t tick, const std::vector<std::string> &lines)
{
    const std::lock_guard lock(mutex_);
    began_ = tick;
    text_.clear();
    passes_ = 0;
    full_.reset();
    started_ = false;
    notes_.clear();
    changes_.clear();
    for (const std::string &line : lines)
        changes_ += line + "\n";
    action_.reset();
    event_.reset();
    frame_lost_ = false;
    known_.clear();
    answered_.clear();
    answer_file(CLOCK_PATH, read_file(root.string() + CLOCK_PATH));
    answer_file(INTERFACES_PATH, read_file(root.string() + INTERFACES_PATH));
    for (const auto &[key, value] : read_settings(root))
        answer({Thing::SETTING, key}, value);
    for (const char *folder : memory_folders)
        hold_folder(root, root / folder);
    answered_.clear(); // what is read may be newer
}

/* Takes `folder` and all below it into the script. Files may come and go meanwhile. */
void Recorder::hold_folder(const fs::path &root, const fs::path &folder)
{
    std::error_code error;
    changes_ += "mkdir " + word("/" + folder.lexically_relative(root).string()) + "\n";
    for (const auto &entry : fs::directory_iterator(folder, error)) {
        if (entry.is_directory(error))
            hold_folder(root, entry.path());
        else if (entry.is_regular_file(error) && entry.file_size(error) < LARGEST_FILE &&
                 entry.path().extension() != UNFINISHED)
            answer_file("/" + entry.path().lexically_relative(root).string(), read_file(entry.path()));
    }
}

void Recorder::note(const std::string &line)
{
    const std::lock_guard lock(mutex_);
    notes_ += line + "\n";
}

void Recorder::begin_pass()
{
    const std::lock_guard lock(mutex_);
    changes_ += std::exchange(notes_, "");
}

void Recorder::put_interfaces(const std::string &known, const std::string &now)
{
    static constexpr std::ptrdiff_t WORDS = 5;
    const auto put = [&](const std::string &text, const std::string &other, const char *command, std::ptrdiff_t count) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream split(line);
            const std::vector<std::string> words{std::istream_iterator<std::string>(split), {}};
            if (std::ssize(words) != WORDS || ("\n" + other).find("\n" + line + "\n") != std::string::npos)
                continue;
            changes_ += command;
            for (const std::string &each : std::vector(words.begin(), words.begin() + count))
                changes_ += " " + word(each);
            changes_ += "\n";
        }
    };
    put(known, now, "interface-unset", 1);
    put(now, known, "interface", WORDS);
}

void Recorder::put_change(const Name &name, const Value &known, const Value &value)
{
    const auto &[thing, key] = name;
    switch (thing) {
    case Thing::SETTING:
        changes_ += value ? "nvram " + word(key) + " " + quoted(*value) : "nvram-unset " + word(key);
        break;
    case Thing::FILE:
        changes_ += file_line(key, value);
        break;
    case Thing::OUTPUT:
        changes_ += "output " + quoted(key) + " " + quoted(*value);
        break;
    case Thing::TIME:
        changes_ += "time " + *value;
        break;
    case Thing::INTERFACES:
        put_interfaces(known.value_or(""), value.value_or(""));
        return;
    }
    changes_ += "\n";
}

/* The daemon has found `name` to be so. What it finds in a pass, the player's has to find from the pass's begin: of two
 * answers the first counts. */
void Recorder::answer(const Name &name, const Value &value)
{
    if (!answered_.insert(name).second)
        return;
    Value &known = known_[name];
    if (known != value)
        put_change(name, known, value);
    known = value;
}

void Recorder::answer_file(const std::string &path, const Value &content)
{
    if (path == CLOCK_PATH) {
        const size_t blank = content.value_or("").find(' ');
        if (content && blank != std::string::npos)
            answer({Thing::TIME, ""}, content->substr(blank + 1, content->find('\n') - blank - 1));
    } else if (path == INTERFACES_PATH) {
        answer({Thing::INTERFACES, ""}, content);
    } else {
        answer({Thing::FILE, path}, content);
    }
}

void Recorder::take(const Telling &telling, uint64_t tick)
{
    const std::lock_guard lock(mutex_);
    const auto &[kind, name, text] = telling;
    if (kind == "get")
        answer({Thing::SETTING, name}, text);
    else if (kind == "unset")
        answer({Thing::SETTING, name}, std::nullopt);
    else if (kind == "set")
        known_[{Thing::SETTING, name}] = text;
    else if (kind == "read" && started_ && name == ACTION_PATH)
        action_ = text;
    else if (kind == "read" && started_ && name == EVENT_PATH)
        event_ = text;
    else if (kind == "read")
        answer_file(name, text);
    else if (kind == "exists")
        answer_file(name, known_[{Thing::FILE, name}].value_or(""));
    else if (kind == "missing")
        answer_file(name, std::nullopt);
    else if (kind == "removed")
        known_[{Thing::FILE, name}].reset();
    else if (kind == "captures")
        captured_ = name;
    else if (kind == "output")
        answer({Thing::OUTPUT, captured_}, name);
    else if (kind == "gone")
        frame_lost_ = true;
    else if (kind == "waits")
        end_pass(tick);
}

/* The key or event that this pass has taken, as the commands for it write its files. */
void Recorder::put_input()
{
    const bool is_event = action_ == "event\n" && event_;
    const std::string &text = is_event ? *event_ : *action_;
    if (text.ends_with('\n') && text.find('\0') == std::string::npos) {
        changes_ += (is_event ? "event " : "key ") + word(text.substr(0, text.size() - 1)) + "\n";
        return;
    }
    if (event_)
        changes_ += file_line(EVENT_PATH, event_) + "\n";
    changes_ += file_line(ACTION_PATH, action_) + "\nsignal input\n";
}

void Recorder::end_pass(uint64_t tick)
{
    /* No script can take the driver away, but a lock loses the player's frame too. */
    if (std::exchange(frame_lost_, false)) {
        known_[{Thing::FILE, LOCK_PATH}] = "";
        changes_ += file_line(LOCK_PATH, "") + "\n";
    }
    if (action_)
        put_input();
    action_.reset();
    event_.reset();
    answered_.clear();
    const std::string changes = std::exchange(changes_, "");
    if (full_)
        return;
    if (!started_ || !changes.empty()) {
        if (passes_ > 0)
            text_ += "pass " + std::to_string(passes_) + "\n";
        passes_ = 0;
        text_ += changes;
    }
    if (std::exchange(started_, true))
        ++passes_;
    else
        text_ += "start\n";
    if (text_.size() > LONGEST_SCRIPT)
        full_ = tick;
}

std::string Recorder::script() const
{
    const std::lock_guard lock(mutex_);
    std::string script = "# What the panel's daemon saw and did since its start at tick " + std::to_string(began_) +
                         " of panel-sim. To play it:\n# panel-replay --root COPY_OF_THE_ASSETS THIS_FILE.scenario\n";
    if (full_)
        script += "# It ends at tick " + std::to_string(*full_) + ": more than " +
                  std::to_string(LONGEST_SCRIPT >> 20) + " MB are not kept. The next starts with the daemon.\n";
    script += text_;
    if (passes_ > 0)
        script += "pass " + std::to_string(passes_) + "\n";
    return script;
}

} // namespace sim
