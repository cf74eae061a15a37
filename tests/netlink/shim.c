/* Preloaded into the daemon: what this machine's kernel has not, and the clock in the test's hands.
 *
 * The display driver's netlink protocol becomes the one for user programs, connected to the port id in LCD_RECEIVER, as
 * long as the file in LCD_DRIVER exists; else it is none, as in a kernel without the driver. The tick timer never runs
 * and a sleep has no end but a signal: a byte to the descriptor in LCD_SLEEPS tells that the daemon goes to sleep. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <linux/netlink.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

enum { LCD_NETLINK_PROTOCOL = 18 };

static int number_in(const char *variable)
{
    return atoi(getenv(variable));
}

int socket(int family, int type, int protocol)
{
    int (*real_socket)(int, int, int) = dlsym(RTLD_NEXT, "socket");
    if (family != AF_NETLINK || protocol != LCD_NETLINK_PROTOCOL)
        return real_socket(family, type, protocol);
    if (access(getenv("LCD_DRIVER"), F_OK) < 0) {
        errno = EPROTONOSUPPORT;
        return -1;
    }
    const int fd = real_socket(family, type, NETLINK_USERSOCK);
    /* Only a bound socket can be connected; binding it again to the same port id succeeds. */
    struct sockaddr_nl own = {.nl_family = AF_NETLINK, .nl_pid = (unsigned)getpid()};
    struct sockaddr_nl peer = {.nl_family = AF_NETLINK, .nl_pid = (unsigned)number_in("LCD_RECEIVER")};
    if (bind(fd, (struct sockaddr *)&own, sizeof own) < 0 || connect(fd, (struct sockaddr *)&peer, sizeof peer) < 0) {
        close(fd);
        return -1;
    }
    return fd;
}

int setitimer(__itimer_which_t which, const struct itimerval *value, struct itimerval *old)
{
    (void)which, (void)value, (void)old;
    return 0;
}

int ppoll(struct pollfd *fds, nfds_t count, const struct timespec *timeout, const sigset_t *mask)
{
    (void)timeout;
    int (*real_ppoll)(struct pollfd *, nfds_t, const struct timespec *, const sigset_t *) = dlsym(RTLD_NEXT, "ppoll");
    /* A tick sent because of the byte must find the daemon asleep. */
    sigset_t tick, before;
    sigemptyset(&tick);
    sigaddset(&tick, SIGALRM);
    sigprocmask(SIG_BLOCK, &tick, &before);
    if (write(number_in("LCD_SLEEPS"), "", 1) != 1)
        _exit(1);
    const int result = real_ppoll(fds, count, NULL, mask);
    sigprocmask(SIG_SETMASK, &before, NULL);
    return result;
}
