#include "bench/system_calls.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr int SYSTEM_CALL_STOP = SIGTRAP | 0x80; // as PTRACE_O_TRACESYSGOOD marks it

[[noreturn]] static void run_traced(const std::function<void()> &code)
{
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    kill(getpid(), SIGSTOP);
    code();
    _exit(0);
}

/* Lets `child` go on to the next entry or exit of a system call. False when it has ended. */
static bool resume(pid_t child)
{
    int status;
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    return waitpid(child, &status, 0) == child && WIFSTOPPED(status) && WSTOPSIG(status) == SYSTEM_CALL_STOP;
}

std::vector<long> trace_system_calls(const std::function<void()> &code)
{
    const pid_t child = fork();
    if (child == 0)
        run_traced(code);
    int status;
    const void *options = reinterpret_cast<const void *>(PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    if (child < 0 || waitpid(child, &status, 0) < 0 || ptrace(PTRACE_SETOPTIONS, child, nullptr, options) < 0) {
        perror("tracing system calls");
        exit(2);
    }
    std::vector<long> numbers;
    __ptrace_syscall_info call;
    while (resume(child))
        if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call) > 0 && call.op == PTRACE_SYSCALL_INFO_ENTRY)
            numbers.push_back(static_cast<long>(call.entry.nr));
    if (numbers.empty() || numbers.back() != SYS_exit_group) {
        fprintf(stderr, "the traced code has not come to its end\n");
        exit(2);
    }
    numbers.pop_back();
    return numbers;
}
