/* What the command-line tools share: their options and their exit codes. */
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

class Problems;

enum class Values { NONE, ONE, MANY };

struct Option {
    const char *name; // with its two dashes
    Values values;    // how many words follow it
    bool required;
};

/* The options of a command line, checked against what the tool knows. */
class Arguments
{
public:
    /* Throws std::invalid_argument for a line that the options do not allow. */
    Arguments(std::span<const char *const> words, std::span<const Option> options);

    bool has(const std::string &name) const { return values_.contains(name); }
    const std::vector<std::string> &all(const std::string &name) const { return values_.at(name); }
    const std::string &one(const std::string &name) const { return values_.at(name).front(); }

private:
    std::map<std::string, std::vector<std::string>> values_;
};

struct Tool {
    const char *usage; // the options on one line
    std::span<const Option> options;
    void (*run)(const Arguments &arguments, Problems &problems);
};

/* Runs a tool; errors go to standard error. The exit code: 0, 1 for bad input, 2 for a bad command line. */
int run_tool(const Tool &tool, int argc, const char *const *argv);
