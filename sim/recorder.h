/* Records a run of the daemon as a scenario script: what the router held at its start, then every pass and, before the
 * pass that it reached the daemon in, all that was new to it. Any thread may call.
 *
 * It is made from what the daemon tells (platform/desk/simulator.h), so that a line stands where the daemon saw it. */
#pragma once

#include "sim/control.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace sim {

/* The line of a script that makes `path` hold `content`; nothing: removes it. */
std::string file_line(const std::string &path, const std::optional<std::string> &content);

class Recorder {
public:
    /* Begins anew: a daemon starts at `tick` on the router at `root`. `lines` make one with whole assets this one. */
    void begin(const std::filesystem::path &root, uint64_t tick, const std::vector<std::string> &lines);

    /* A line for something that the daemon does not tell, done before its next pass. */
    void note(const std::string &line);

    /* The daemon gets a tick. */
    void begin_pass();

    /* What it has told since; that it waits ends the pass. */
    void take(const Telling &telling, uint64_t tick);

    std::string script() const;

private:
    enum class Thing { SETTING, FILE, OUTPUT, TIME, INTERFACES };
    using Name = std::pair<Thing, std::string>;
    using Value = std::optional<std::string>; // nothing: there is none

    void answer(const Name &name, const Value &value);
    void answer_file(const std::string &path, const Value &content);
    void hold_folder(const std::filesystem::path &root, const std::filesystem::path &folder);
    void put_change(const Name &name, const Value &known, const Value &value);
    void put_interfaces(const std::string &known, const std::string &now);
    void put_input();
    void end_pass(uint64_t tick);

    mutable std::mutex mutex_;
    uint64_t began_ = 0; // tick
    std::string text_;   // complete passes
    uint64_t passes_ = 0; // that follow `text_` and are not yet in it
    std::optional<uint64_t> full_; // tick: the text has grown too long
    bool started_ = false;
    std::string notes_;            // of the next pass
    std::string changes_;          // of this pass
    Value action_, event_;         // the files of the input that this pass has taken
    bool frame_lost_ = false;      // in this pass: the driver was gone
    std::string captured_;         // command
    std::map<Name, Value> known_;  // what the player of the script holds
    std::set<Name> answered_;      // in this pass
};

} // namespace sim
