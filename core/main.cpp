/* The front-panel display daemon: it runs until it is killed. */
#include "core/main_loop.h"

#include <csignal>
#include <cstdio>

static void lose_reader(int) {}

int main()
{
    /* Whoever reads the messages may go away; the panel stays. A handler, not SIG_IGN, which the programs started from
     * here would inherit. */
    signal(SIGPIPE, lose_reader);
    /* A message is seen when it happens, also where standard output is a pipe to the system log. */
    setvbuf(stdout, nullptr, _IOLBF, 0);
    panel_start();
    for (;;) {
        panel_wait();
        panel_pass();
    }
}
