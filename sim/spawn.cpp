#include "sim/spawn.h"

#include "sim/fd.h"

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>

namespace sim {

static std::vector<char *> pointers(const std::vector<std::string> &texts)
{
    std::vector<char *> list;
    list.reserve(texts.size() + 1);
    for (const std::string &text : texts)
        list.push_back(const_cast<char *>(text.c_str()));
    list.push_back(nullptr);
    return list;
}

static void reset_signals(bool own)
{
    signal(SIGPIPE, SIG_DFL);
    for (const int early : {SIGALRM, SIGUSR1, SIGUSR2})
        signal(early, own ? SIG_IGN : SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

static void reset_descriptors(int output)
{
    const int input = open("/dev/null", O_RDONLY);
    dup2(input, STDIN_FILENO);
    if (output >= 0) {
        dup2(output, STDOUT_FILENO);
        dup2(output, STDERR_FILENO);
    }
    /* A connection of the page's that lived on in a child would never be seen to end. */
    close_range(STDERR_FILENO + 1, ~0U, 0);
}

/* In the child of a program with threads: nothing here may allocate. */
[[noreturn]] static void become(const Command &command, char *const *arguments, char *const *environment, pid_t parent)
{
    setpgid(0, command.group);
    if (command.own)
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (!command.own || getppid() == parent) {
        reset_descriptors(command.output);
        reset_signals(command.own);
        execve(arguments[0], arguments, environment);
    }
    _exit(127);
}

pid_t spawn(const Command &command)
{
    const std::vector<char *> arguments = pointers(command.arguments);
    const std::vector<char *> environment = pointers(command.environment);
    const pid_t parent = getpid();
    /* A signal that comes before the child has its own dispositions would end it. */
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = fork();
    if (child == 0)
        become(command, arguments.data(), environment.data(), parent);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (child < 0)
        fail("fork");
    /* Here too, so that the group is there when spawn returns. */
    setpgid(child, command.group);
    return child;
}

static std::string_view name_of(std::string_view variable)
{
    return variable.substr(0, variable.find('=') + 1);
}

std::vector<std::string> environment_with(const std::vector<std::string> &changes)
{
    std::vector<std::string> result = changes;
    for (char **variable = environ; *variable; ++variable) {
        const bool changed = std::any_of(changes.begin(), changes.end(), [&](const std::string &change) {
            return name_of(change) == name_of(*variable);
        });
        if (!changed)
            result.emplace_back(*variable);
    }
    return result;
}

} // namespace sim
