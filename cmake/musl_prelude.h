/* Included first wherever musl is compiled against: what GCC's C++ headers, configured for the GNU library, expect of
 * it. Nothing here is called. */
#pragma once

#include <locale.h>
#include <pthread.h>
#include <time.h>

#define __GLIBC_PREREQ(major, minor) 0

typedef locale_t __locale_t;

#ifdef __cplusplus
extern "C"
#endif
    int pthread_cond_clockwait(pthread_cond_t *, pthread_mutex_t *, clockid_t, const struct timespec *);
