#include "sim/terminal_guard.h"

#include <csignal>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace sim {

static Fd duplicate(int fd)
{
    return Fd(fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

static Fd open_log(const std::filesystem::path &file)
{
    Fd log(open(file.empty() ? "/dev/null" : file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644));
    if (!log)
        fail(file);
    return log;
}

OutputElsewhere::OutputElsewhere(const std::filesystem::path &file)
    : output_(duplicate(STDOUT_FILENO)), error_(duplicate(STDERR_FILENO))
{
    const Fd log = open_log(file);
    if (file.empty())
        complaints_ = Fd(memfd_create("complaints", MFD_CLOEXEC));
    std::fflush(stdout);
    dup2(log.get(), STDOUT_FILENO);
    dup2(complaints_ ? complaints_.get() : log.get(), STDERR_FILENO);
}

OutputElsewhere::~OutputElsewhere()
{
    std::fflush(stdout);
    dup2(output_.get(), STDOUT_FILENO);
    dup2(error_.get(), STDERR_FILENO);
    off_t told = 0;
    struct stat status;
    while (complaints_ && fstat(complaints_.get(), &status) == 0 && told < status.st_size)
        if (sendfile(STDERR_FILENO, complaints_.get(), &told, static_cast<size_t>(status.st_size - told)) <= 0)
            break;
}

/* In the child of a program with threads: nothing here may allocate. */
[[noreturn]] static void keep_guard(int owner, int terminal, const termios &modes, const std::string &farewell)
{
    dup2(owner, STDIN_FILENO);
    dup2(terminal, STDOUT_FILENO);
    close_range(STDERR_FILENO, ~0U, 0);
    char in_order;
    if (read(STDIN_FILENO, &in_order, 1) == 0) {
        tcsetattr(STDOUT_FILENO, TCSANOW, &modes);
        for (size_t done = 0; done < farewell.size();) {
            const ssize_t written = write(STDOUT_FILENO, farewell.data() + done, farewell.size() - done);
            if (written <= 0)
                break;
            done += static_cast<size_t>(written);
        }
    }
    _exit(0);
}

TerminalGuard::TerminalGuard(int terminal, const termios &modes, const std::string &farewell)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) < 0)
        fail("pipe");
    const Fd owner(ends[0]);
    alive_ = Fd(ends[1]);
    /* What ends or stops this program by the terminal's doing must not touch the guard. */
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    process_ = fork();
    if (process_ == 0)
        keep_guard(owner.get(), terminal, modes, farewell);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (process_ < 0)
        fail("fork");
}

TerminalGuard::~TerminalGuard()
{
    if (write(alive_.get(), "", 1) == 1)
        waitpid(process_, nullptr, 0);
}

} // namespace sim
