/* Time on the desk: the simulator's where one runs, else the workstation's. */
#include "platform/desk/root.h"
#include "platform/router.h"

#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/time.h>
#include <unistd.h>

static constexpr const char *CLOCK_FILE = "/run/clock"; // "TICKS SECONDS\n", kept by the simulator

/* Whether a simulator sends the ticks and keeps the wall clock. */
static bool is_simulated()
{
    const char *clock = getenv("PANEL_CLOCK");
    return clock && std::string_view(clock) == "simulator";
}

/* Reads a decimal number that ends in `end` off `*text`. False when there is none. */
static bool take_number(std::string_view *text, char end, time_t *number)
{
    const char *const last = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), last, *number);
    if (error != std::errc() || stop == last || *stop != end)
        return false;
    *text = {stop + 1, last};
    return true;
}

static bool read_clock(time_t *seconds)
{
    const int fd = router_open(CLOCK_FILE, O_RDONLY);
    if (fd < 0)
        return false;
    char line[64];
    const ssize_t length = read(fd, line, sizeof line);
    close(fd);
    if (length < 0)
        return false;
    std::string_view text(line, static_cast<size_t>(length));
    time_t ticks;
    return take_number(&text, ' ', &ticks) && take_number(&text, '\n', seconds);
}

time_t router_time()
{
    time_t seconds;
    return is_simulated() && read_clock(&seconds) ? seconds : time(nullptr);
}

tm *router_local_time(time_t t, tm *local)
{
    /* A router's library knows no zone of its own: its local time is UTC. The zone that its user chose is added by the
     * daemon. */
    return gmtime_r(&t, local);
}

int router_start_tick(const itimerval *interval)
{
    /* The first that the daemon asks of a router: without a root folder it ends here. */
    desk_root();
    return is_simulated() ? 0 : setitimer(ITIMER_REAL, interval, nullptr);
}
