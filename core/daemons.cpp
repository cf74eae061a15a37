#include "core/daemons.h"

#include "core/command.h"
#include "core/file.h"
#include "platform/router.h"

#include <cstring>
#include <fcntl.h>

static constexpr const char *PROCESS_LIST_COMMAND = "/bin/ps -e 2> /dev/null";

static constexpr const char *RESTART_RECORD = "/tmp/lcd/lcd_debug_process";

struct Companion {
    const char *name;
    const char *record_command; // adds the restart to the restart record
    const char *start_command;
};

static const Companion companions[] = {
    {"network_status", "/bin/echo network_status >> /tmp/lcd/lcd_debug_process", "/usr/sbin/network_status &"},
    {"pc_monitor", "/bin/echo pc_monitor >> /tmp/lcd/lcd_debug_process", "/usr/sbin/pc_monitor &"},
};

/* The shell appends to the record as root: it must not follow a link that somebody has put there, nor wait for a pipe's
 * reader. */
static void remove_planted_record()
{
    if (!File(RESTART_RECORD, O_WRONLY | O_NOFOLLOW).is_plain())
        router_remove(RESTART_RECORD);
}

void check_daemons()
{
    const CommandOutput processes(PROCESS_LIST_COMMAND);
    if (!processes.text())
        return;
    for (const Companion &companion : companions) {
        if (strstr(processes.text(), companion.name))
            continue;
        remove_planted_record();
        router_system(companion.record_command);
        router_system(companion.start_command);
    }
}
