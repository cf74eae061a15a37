#include "platform/replay/replay.h"

#include <cinttypes>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

ReplayRouter replay;

/* No folder at first: until one is opened, no path leads anywhere. */
static int root_fd = -1;

bool replay_open_root(const std::string &dir)
{
    const int fd = open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    if (root_fd >= 0)
        close(root_fd);
    root_fd = fd;
    return true;
}

int replay_root()
{
    return root_fd;
}

const char *replay_relative(const char *router_path)
{
    /* One slash left in front would make the path that of this machine. */
    while (*router_path == '/')
        router_path++;
    return router_path;
}

void replay_record(const char *kind, const char *rest)
{
    if (!replay.trace)
        return;
    printf("@%" PRIu32 " %s", replay.ticks ? replay.ticks() : 0, kind);
    if (*rest)
        printf(" %s", rest);
    printf("\n");
}
