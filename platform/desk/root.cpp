#include "platform/desk/root.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>

static constexpr const char *ROOT_VARIABLE = "PANEL_ROOT";

/* The root folder once it is open. */
static bool opened;
static int root;
static char root_path[PATH_MAX];

[[noreturn]] static void refuse(const char *reason)
{
    fprintf(stderr, "frontpaneld-desk: %s must name the folder that stands for the router's root: %s\n", ROOT_VARIABLE,
            reason);
    exit(1);
}

/* Leaves the root's own programs alone to be found: no command may reach one of the workstation. */
static void confine_path()
{
    char path[4 * (sizeof root_path + sizeof ":/usr/sbin")];
    snprintf(path, sizeof path, "%1$s/bin:%1$s/sbin:%1$s/usr/bin:%1$s/usr/sbin", root_path);
    if (setenv("PATH", path, 1) < 0)
        refuse(strerror(errno));
}

static void open_root()
{
    const char *name = getenv(ROOT_VARIABLE);
    if (!name)
        refuse("it is not set");
    if (!realpath(name, root_path))
        refuse(strerror(errno));
    if (strcmp(root_path, "/") == 0)
        refuse("the workstation's own root will not do");
    if (strchr(root_path, ':'))
        refuse("PATH cannot hold a folder with a colon in its name");
    root = open(root_path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (root < 0)
        refuse(strerror(errno));
    confine_path();
    opened = true;
}

int desk_root()
{
    if (!opened)
        open_root();
    return root;
}

const char *desk_root_path()
{
    desk_root();
    return root_path;
}

const char *desk_relative(const char *router_path)
{
    return router_path + 1;
}
