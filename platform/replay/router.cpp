#include "platform/router.h"

#include "platform/replay/replay.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/netlink.h>
#include <sys/eventfd.h>
#include <unistd.h>

int router_open(const char *path, int flags)
{
    return openat(replay_root(), replay_relative(path), flags | O_CLOEXEC | O_NONBLOCK, 0644);
}

bool router_exists(const char *path)
{
    return faccessat(replay_root(), replay_relative(path), F_OK, 0) == 0;
}

int router_remove(const char *path)
{
    return unlinkat(replay_root(), replay_relative(path), 0);
}

int router_system(const char *command)
{
    replay_record("system", command);
    return 0;
}

FILE *router_popen(const char *command)
{
    replay_record("pipe", command);
    const auto failing = replay.failing.find(command);
    if (failing != replay.failing.end() && failing->second) {
        errno = EAGAIN;
        return nullptr;
    }
    const auto output = replay.outputs.find(command);
    const char *text = output == replay.outputs.end() ? "" : output->second.c_str();
    return fmemopen(const_cast<char *>(text), strlen(text), "r");
}

int router_pclose(FILE *stream)
{
    return fclose(stream);
}

time_t router_time()
{
    return replay.clock;
}

tm *router_local_time(time_t t, tm *local)
{
    return gmtime_r(&t, local);
}

int router_start_tick(const itimerval *)
{
    return 0;
}

int router_display_socket()
{
    if (replay.display_socket_fails) {
        errno = EPROTONOSUPPORT;
        return -1;
    }
    /* Nothing goes through it: a descriptor that can be closed. */
    return eventfd(0, EFD_CLOEXEC);
}

int router_display_bind(int, uint32_t)
{
    if (!replay.display_bind_fails)
        return 0;
    errno = EADDRINUSE;
    return -1;
}

ssize_t router_display_send(int, const void *message, size_t size)
{
    if (size != sizeof(nlmsghdr) + sizeof replay.frame) {
        errno = EMSGSIZE;
        return -1;
    }
    memcpy(replay.frame, static_cast<const uint8_t *>(message) + sizeof(nlmsghdr), sizeof replay.frame);
    replay.frame_count++;
    std::string digits;
    for (const uint8_t byte : replay.frame) {
        digits += "0123456789abcdef"[byte >> 4];
        digits += "0123456789abcdef"[byte & 15];
    }
    replay_record("frame", digits.c_str());
    return static_cast<ssize_t>(size);
}
