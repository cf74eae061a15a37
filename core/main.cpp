/* The front-panel display daemon: it runs until it is killed. */
#include "core/main_loop.h"

#include <csignal>
#include <cstdio>

int main()
{
    /* Whoever reads the messages may go away; the panel stays. */
    signal(SIGPIPE, SIG_IGN);
    /* A message is seen when it happens, also where standard output is a pipe to the system log. */
    setvbuf(stdout, nullptr, _IOLBF, 0);
    panel_start();
    for (;;) {
        panel_wait();
        panel_pass();
    }
}
