#include "core/daemons.h"

#include "core/command.h"
#include "platform/router.h"

#include <cstring>

static constexpr const char *PROCESS_LIST_COMMAND = "/bin/ps -e 2> /dev/null";

struct Companion {
    const char *name;
    const char *record_command; // adds the restart to the restart record
    const char *start_command;
};

static const Companion companions[] = {
    {"network_status", "/bin/echo network_status >> /tmp/lcd/lcd_debug_process", "/usr/sbin/network_status &"},
    {"pc_monitor", "/bin/echo pc_monitor >> /tmp/lcd/lcd_debug_process", "/usr/sbin/pc_monitor &"},
};

void check_daemons()
{
    const CommandOutput processes(PROCESS_LIST_COMMAND);
    if (!processes.text())
        return;
    for (const Companion &companion : companions) {
        if (strstr(processes.text(), companion.name))
            continue;
        router_system(companion.record_command);
        router_system(companion.start_command);
    }
}
