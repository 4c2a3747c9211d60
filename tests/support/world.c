// A library to be preloaded into a program under test. It gives the program a world of its own:
//
//   KELP_TEST_WORLD=DIR   /tmp/xxxxx.log and everything below /var/spool/cups/tmp are opened,
//                         looked up by lstat and removed below DIR instead, with the very flags
//                         the program asked for;
//   KELP_TEST_TIME=SECONDS   the time of day stands still at that many seconds since the epoch.
//
// Every other path, and every other clock, is the real one.

#define _GNU_SOURCE
// Checked or 64-bit variants of the headers would turn our definitions into inline functions.
#undef _FORTIFY_SOURCE
#undef _FILE_OFFSET_BITS

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <time.h>

// A function pointer out of dlsym is beyond ISO C, as the whole library is.
#define NEXT(name) (__extension__(__typeof__(&name)) dlsym(RTLD_NEXT, #name))

static const char* moved(const char* path, char buffer[PATH_MAX]) {
    static const char log_path[] = "/tmp/xxxxx.log";
    static const char spool[] = "/var/spool/cups/tmp";
    const size_t spool_length = sizeof(spool) - 1;
    const char* world = getenv("KELP_TEST_WORLD");
    if (world == NULL || path == NULL) {
        return path;
    }
    const int in_spool = strncmp(path, spool, spool_length) == 0 &&
                         (path[spool_length] == '/' || path[spool_length] == '\0');
    if (!in_spool && strcmp(path, log_path) != 0) {
        return path;
    }
    if ((size_t)snprintf(buffer, PATH_MAX, "%s%s", world, path) >= PATH_MAX) {
        abort();  // better no answer than the real path
    }
    return buffer;
}

static mode_t mode_argument(int flags, va_list arguments) {
    const int has_mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return has_mode ? va_arg(arguments, mode_t) : 0;
}

#define DEFINE_OPEN(name)                                    \
    int name(const char* path, int flags, ...) {             \
        char buffer[PATH_MAX];                               \
        va_list arguments;                                   \
        va_start(arguments, flags);                          \
        const mode_t mode = mode_argument(flags, arguments); \
        va_end(arguments);                                   \
        return NEXT(name)(moved(path, buffer), flags, mode); \
    }

#define DEFINE_OPENAT(name)                                             \
    int name(int directory, const char* path, int flags, ...) {         \
        char buffer[PATH_MAX];                                          \
        va_list arguments;                                              \
        va_start(arguments, flags);                                     \
        const mode_t mode = mode_argument(flags, arguments);            \
        va_end(arguments);                                              \
        return NEXT(name)(directory, moved(path, buffer), flags, mode); \
    }

#define DEFINE_CREAT(name)                            \
    int name(const char* path, mode_t mode) {         \
        char buffer[PATH_MAX];                        \
        return NEXT(name)(moved(path, buffer), mode); \
    }

#define DEFINE_FOPEN(name)                            \
    FILE* name(const char* path, const char* mode) {  \
        char buffer[PATH_MAX];                        \
        return NEXT(name)(moved(path, buffer), mode); \
    }

DEFINE_OPEN(open)
DEFINE_OPEN(open64)
DEFINE_OPENAT(openat)
DEFINE_OPENAT(openat64)
DEFINE_CREAT(creat)
DEFINE_CREAT(creat64)
DEFINE_FOPEN(fopen)
DEFINE_FOPEN(fopen64)

// What the checked headers make of an open without a mode argument.
int __open_2(const char* path, int flags);
int __open64_2(const char* path, int flags);
int __openat_2(int directory, const char* path, int flags);
int __openat64_2(int directory, const char* path, int flags);
int __open_2(const char* path, int flags) {
    return open(path, flags);
}
int __open64_2(const char* path, int flags) {
    return open64(path, flags);
}
int __openat_2(int directory, const char* path, int flags) {
    return openat(directory, path, flags);
}
int __openat64_2(int directory, const char* path, int flags) {
    return openat64(directory, path, flags);
}

int lstat(const char* restrict path, struct stat* restrict result) {
    char buffer[PATH_MAX];
    return NEXT(lstat)(moved(path, buffer), result);
}

int unlink(const char* path) {
    char buffer[PATH_MAX];
    return NEXT(unlink)(moved(path, buffer));
}

static int fixed_time(time_t* seconds) {
    const char* text = getenv("KELP_TEST_TIME");
    if (text == NULL) {
        return 0;
    }
    *seconds = (time_t)strtoll(text, NULL, 10);
    return 1;
}

time_t time(time_t* result) {
    time_t seconds;
    if (!fixed_time(&seconds)) {
        return NEXT(time)(result);
    }
    if (result != NULL) {
        *result = seconds;
    }
    return seconds;
}

int clock_gettime(clockid_t clock, struct timespec* result) {
    time_t seconds;
    if ((clock != CLOCK_REALTIME && clock != CLOCK_REALTIME_COARSE) || !fixed_time(&seconds)) {
        return NEXT(clock_gettime)(clock, result);
    }
    result->tv_sec = seconds;
    result->tv_nsec = 0;
    return 0;
}

int gettimeofday(struct timeval* restrict result, void* restrict zone) {
    time_t seconds;
    if (!fixed_time(&seconds)) {
        return NEXT(gettimeofday)(result, zone);
    }
    result->tv_sec = seconds;
    result->tv_usec = 0;
    return 0;
}
