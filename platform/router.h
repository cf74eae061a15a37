/* The daemon's way to the router, but for the settings store (platform/nvram.h).
 *
 * Paths and commands are those of the router ("/tmp/lcd/lcd_action"); where they really lie and run is the business
 * of the platform that the program is linked with: router, desk or replay. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <sys/types.h>

struct ifreq;
struct itimerval;

/* As open(2) with mode 0644; the descriptor is closed on exec and opening never waits for another program (a FIFO).
 * -1 with errno on failure. */
int router_open(const char *path, int flags);

/* Whether `path` exists, as access(2) with F_OK tells. */
bool router_exists(const char *path);

/* Removes a file. 0, or -1 with errno. */
int router_remove(const char *path);

/* Runs a shell command and waits for it, as system(3). */
int router_system(const char *command);

/* Starts a shell command whose standard output is read from the stream, as popen(3); null on failure. */
FILE *router_popen(const char *command);

/* Ends what router_popen started, as pclose(3). */
int router_pclose(FILE *stream);

/* The wall clock in seconds since the epoch, as time(2). */
time_t router_time();

/* `t` as the system's local time, as localtime_r(3); null on failure. */
tm *router_local_time(time_t t, tm *local);

/* Starts the periodic tick signal, as setitimer(2) with ITIMER_REAL. 0, or -1 with errno. */
int router_start_tick(const itimerval *interval);

/* A datagram socket for router_interface_query; -1 with errno on failure. */
int router_interface_socket();

/* One query about the network interface named in `interface`, as ioctl(2) with a SIOCGIF... request. */
int router_interface_query(int fd, unsigned long request, ifreq *interface);

/* A socket to the display driver; -1 with errno on failure. Closed with close(2). */
int router_display_socket();

/* Binds the display socket to the sender port id `port`. 0, or -1 with errno. */
int router_display_bind(int fd, uint32_t port);

/* Hands one message to the display driver. Bytes sent, or -1 with errno. */
ssize_t router_display_send(int fd, const void *message, size_t size);
