/* Makes every call of the daemon's on a walk through all screens fail once, each in a process of its own, and holds
 * what comes of it against the walk without faults: faults [--every K] WALK.scenario */
#include "core/input.h"
#include "core/screen_table.h"
#include "hardening/call_layer.h"
#include "hardening/fault_walk.h"
#include "lang/language.h"
#include "replay/script.h"
#include "status/power_save_mode.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr int ERRORS[] = {ENOENT, EACCES, EMFILE, ENOMEM, ENOSPC, EINTR, EAGAIN};
static constexpr unsigned REDRAW_PASSES = 7;
static constexpr rlimit LONGEST = {20, 20}; // seconds of processor time; a step takes thousandths

/* What a fault leaves behind, from the best on. */
enum Verdict { SAME_SOON, SAME_AGAIN, SAME_SET_ANEW, WRONG, VERDICTS };

/* How a step ends without a fault, and the pictures that follow: at the next redraw, and when its screen is entered
 * again. */
struct StepEnd {
    std::array<unsigned, CALL_KINDS> counts;
    const ScreenEntry *screen;
    int event, language, power_save_mode;
    Picture soon, again;
};

struct Reference : StepEnd {
    World after;
    bool changed_files; // by the step
};

/* What a child tells its parent. */
struct Shared {
    StepEnd end;
    bool changed_files;
    char reason[100];
};

static Shared *shared;
static FILE *report;
static int lowest_free;

/* How the lines of the daemon's messages begin, and those of the programs that it runs. */
static constexpr std::string_view MESSAGES[] = {
    "write_lcd_data: ",
    "no bitmap for ",
    "memory allocate failed for ",
    "drawDot return, ",
    "drawRectangle return,",
    "drawCharacter return",
    "drawString return, ",
    "drawInfo return",
    "drawSelect return",
    "drawRowedInfo return",
    "drawScrollBar return, ",
    "lcd timer init failed",
    "drawBresenham",
    "lcd load_language, ",
    "error load language ",
    "user: socket creating failed: ",
    "reg:4048 ", // the register tool
};

static std::string printed()
{
    fflush(stdout);
    std::string text(static_cast<size_t>(lseek(STDOUT_FILENO, 0, SEEK_END)), '\0');
    return pread(STDOUT_FILENO, text.data(), text.size(), 0) < 0 ? "" : text;
}

/* The first line that is none of the daemon's messages; "" when there is none. */
static std::string unknown_message()
{
    const std::string text = printed();
    for (size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
        const std::string line = text.substr(at, text.find('\n', at) - at);
        bool known = false;
        for (const std::string_view start : MESSAGES)
            known |= line.starts_with(start);
        if (!known)
            return line;
    }
    return "";
}

[[noreturn]] static void end_child(Verdict verdict, const std::string &reason = "")
{
    fflush(stdout);
    snprintf(shared->reason, sizeof shared->reason, "%s", reason.c_str());
    shared->changed_files = layer.changed_files;
    _exit(verdict);
}

/* What must hold behind every pass, whatever has failed. */
static void check_nothing_held()
{
    if (layer.allocations != 0)
        end_child(WRONG, "memory: " + std::to_string(layer.allocations) + " blocks");
    if (layer.asset_files != 0 || lowest_descriptor() != lowest_free)
        end_child(WRONG, "a descriptor is left open");
    if (const std::string line = unknown_message(); !line.empty())
        end_child(WRONG, "printed: " + line);
}

static bool is_locked()
{
    return faccessat(layer.root_fd, "tmp/lcd/lcd_wp", F_OK, 0) == 0;
}

static void learn(const Words &step)
{
    layer.armed = true;
    play_daemon_line(step);
    layer.armed = false;
    StepEnd &reference = shared->end;
    reference.counts = layer.counts;
    reference.screen = current_screen;
    reference.event = get_lcd_event_id();
    reference.language = get_current_language();
    check_nothing_held();
    play_passes(REDRAW_PASSES);
    reference.soon = layer.picture;
    switch_screen(reference.screen->name);
    reference.again = layer.picture;
    reference.power_save_mode = get_lcd_power_save_mode();
    end_child(SAME_SOON);
}

/* The picture of the reference's screen, entered as the walk without faults has entered it: from itself. */
static bool is_same_again(const StepEnd &reference)
{
    if (current_screen != reference.screen)
        switch_screen(reference.screen->name);
    switch_screen(reference.screen->name);
    return layer.picture == reference.again && !is_locked();
}

static void suffer(const Words &step, const Reference &reference, const WalkRoot &root)
{
    layer.armed = true;
    play_daemon_line(step);
    layer.armed = false;
    check_nothing_held();
    if (layer.input_failed) {
        /* Nothing came of the key: its user presses it again. */
        lcd_input_handler(SIGUSR1);
        play_passes(1);
    }
    if (layer.changed_files || reference.changed_files)
        root.restore(reference.after);
    set_lcd_event_id(reference.event);
    play_passes(REDRAW_PASSES);
    check_nothing_held();
    if (layer.picture == reference.soon && !is_locked())
        end_child(SAME_SOON);
    if (is_same_again(reference))
        end_child(SAME_AGAIN);
    /* What is read once only: its user sets it again. */
    load_language(reference.language);
    while (get_lcd_power_save_mode() != reference.power_save_mode)
        toggle_lcd_power_save_mode();
    if (is_same_again(reference))
        end_child(SAME_SET_ANEW);
    end_child(WRONG,
              is_locked() ? "the lock file is left" : std::string("another picture, on ") + current_screen->name);
}

/* Runs `child` in a copy of this process. Its exit status as a verdict. */
template <typename Child> static Verdict in_child(Child child)
{
    fflush(nullptr);
    *shared->reason = '\0';
    if (ftruncate(STDOUT_FILENO, 0) < 0 || lseek(STDOUT_FILENO, 0, SEEK_SET) < 0)
        throw std::runtime_error("no room for messages");
    const pid_t pid = fork();
    if (pid < 0)
        throw std::runtime_error("no process");
    if (pid == 0) {
        setrlimit(RLIMIT_CPU, &LONGEST);
        child();
    }
    int status = 0;
    waitpid(pid, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) < VERDICTS)
        return static_cast<Verdict>(WEXITSTATUS(status));
    shared->changed_files = true;
    snprintf(shared->reason, sizeof shared->reason, "it died of status %x", static_cast<unsigned>(status));
    return WRONG;
}

/* The figures of a kind of call. */
struct Tally {
    unsigned calls = 0, faults = 0;
    std::array<unsigned, VERDICTS> verdicts = {};
};
static Tally tallies[CALL_KINDS];
static constexpr unsigned SAMPLED_WHOLE = 20; // of the first faults of a kind, each is tried
static unsigned sampled[CALL_KINDS], every = 1;

static void complain(const std::string &line, CallKind kind, unsigned nth, int error)
{
    fprintf(report, "WRONG: %s: %s number %u, %s: %s\n%s", line.c_str(), call_names[kind], nth, strerrorname_np(error),
            shared->reason, printed().substr(0, 300).c_str());
}

static void inject(const Words &step, const std::string &line, const Reference &reference, const WalkRoot &root,
                   const World &before, CallKind kind, unsigned nth, int error)
{
    if (sampled[kind]++ % every != 0 && sampled[kind] > SAMPLED_WHOLE)
        return;
    layer.kind = kind;
    layer.nth = nth;
    layer.error = error;
    const Verdict verdict = in_child([&] { suffer(step, reference, root); });
    tallies[kind].faults++;
    tallies[kind].verdicts[verdict]++;
    if (verdict == WRONG)
        complain(line, kind, nth, error);
    else if (verdict != SAME_SOON && getenv("FAULTS_VERBOSE"))
        fprintf(report, "%d: %s: %s number %u, %s\n", verdict, line.c_str(), call_names[kind], nth,
                strerrorname_np(error));
    if (shared->changed_files || verdict == WRONG)
        root.restore(before);
}

static void walk_step(const Words &step, const std::string &line, const WalkRoot &root)
{
    const World before = root.read_world();
    lowest_free = lowest_descriptor();
    layer.changed_files = false;
    layer.counts = {};
    layer.nth = 0;
    if (in_child([&] { learn(step); }) != SAME_SOON)
        throw std::runtime_error(line + ": without a fault: " + shared->reason);
    const Reference reference = {shared->end, root.read_world(), shared->changed_files};
    root.restore(before);
    for (int kind = 0; kind < CALL_KINDS; kind++) {
        tallies[kind].calls += reference.counts[kind];
        for (unsigned nth = 1; nth <= reference.counts[kind]; nth++)
            for (const int error : ERRORS)
                if (kind != CALL_MEMORY || error == ENOMEM)
                    inject(step, line, reference, root, before, static_cast<CallKind>(kind), nth, error);
    }
    layer.nth = 0;
    play_daemon_line(step);
}

static std::set<std::string> visited = {"welcome"};

static void walk(const char *file, const WalkRoot &root)
{
    std::ifstream script(file);
    unsigned number = 0;
    for (std::string text; std::getline(script, text);) {
        const ScriptLine line = split_line(text);
        const std::string place = "line " + std::to_string(++number) + ", " + text;
        if (!line.error.empty())
            throw std::runtime_error(place + ": " + line.error);
        if (!line.words.empty() && !root.play_world_line(line.words))
            walk_step(line.words, place, root);
    }
    if (visited.size() != SCREEN_COUNT)
        throw std::runtime_error("the walk has seen " + std::to_string(visited.size()) + " screens");
}

static bool print_tallies()
{
    fprintf(report, "%-8s %8s %8s %12s %12s %12s %6s\n", "call", "calls", "faults", "next redraw", "entered anew",
            "set anew", "wrong");
    Tally all;
    for (int kind = 0; kind < CALL_KINDS; kind++) {
        const Tally &tally = tallies[kind];
        all.calls += tally.calls;
        all.faults += tally.faults;
        for (int verdict = 0; verdict < VERDICTS; verdict++)
            all.verdicts[verdict] += tally.verdicts[verdict];
        if (tally.calls > 0)
            fprintf(report, "%-8s %8u %8u %12u %12u %12u %6u\n", call_names[kind], tally.calls, tally.faults,
                    tally.verdicts[0], tally.verdicts[1], tally.verdicts[2], tally.verdicts[3]);
    }
    fprintf(report, "%-8s %8u %8u %12u %12u %12u %6u\n", "all", all.calls, all.faults, all.verdicts[0], all.verdicts[1],
            all.verdicts[2], all.verdicts[3]);
    return all.verdicts[WRONG] == 0 && all.faults > 0;
}

int main(int argc, char **argv)
{
    if (argc == 4 && strcmp(argv[1], "--every") == 0)
        every = static_cast<unsigned>(atoi(argv[2]));
    if ((argc != 2 && argc != 4) || every == 0) {
        fputs("usage: faults [--every K] WALK.scenario\n", stderr);
        return 2;
    }
    shared =
        static_cast<Shared *>(mmap(nullptr, sizeof *shared, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    report = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3), "w");
    const int messages = memfd_create("messages", MFD_CLOEXEC);
    dup2(messages, STDOUT_FILENO);
    dup2(messages, STDERR_FILENO);
    screen_observer = [](const char *name) { visited.insert(name); };
    try {
        const WalkRoot root;
        preload_assets();
        walk(argv[argc - 1], root);
    } catch (const std::exception &error) {
        fprintf(report, "%s\n", error.what());
        return 2;
    }
    return print_tallies() ? 0 : 1;
}
