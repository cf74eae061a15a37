/* The system calls that a piece of code really makes, seen from outside as a debugger sees them. */
#pragma once

#include <functional>
#include <vector>

/* Runs `code` in a copy of this process and stops it at each system call. Their numbers (SYS_...) in order; ends the
 * program where the system does not allow tracing. */
std::vector<long> trace_system_calls(const std::function<void()> &code);
