/* The daemon's sleep where a simulator watches. The linker puts it around panel_wait (CMakeLists.txt). */
#include "platform/desk/simulator.h"

#include <csignal>

/* The linker's names. */
extern "C" void __real__Z10panel_waitv(); // NOLINT
extern "C" void __wrap__Z10panel_waitv(); // NOLINT

/* A pass is made for a tick alone, so that a run depends on nothing but what the simulator sends: keys and languages
 * that were announced before the tick are seen in its pass. */
void __wrap__Z10panel_waitv()
{
    if (!is_watched()) {
        __real__Z10panel_waitv();
        return;
    }
    sigset_t held, tick, before;
    sigemptyset(&tick);
    sigaddset(&tick, SIGALRM);
    held = tick;
    sigaddset(&held, SIGUSR1);
    sigaddset(&held, SIGUSR2);
    sigprocmask(SIG_BLOCK, &held, &before);
    tell("waits");
    int taken;
    sigwait(&tick, &taken);
    /* Its handler counts it once it is let in. */
    raise(SIGALRM);
    sigprocmask(SIG_SETMASK, &before, nullptr);
}
