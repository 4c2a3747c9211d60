// A library to be preloaded into a program under test. It lets allocations of the program fail, and
// of every library in it: malloc, calloc, realloc and with them operator new.
//
//   KELP_FAULT_MEMORY=N         the N-th allocation since main began gives null; 0 for none
//   KELP_FAULT_MEMORY_ONWARDS=1 and so does each one behind it
//   KELP_FAULT_MEMORY_REPORT=FILE   what happened, in lines:
//       failed SIZE OBJECT     for each that failed: its size, and the file name of the program or
//                              library that asked, past the C and C++ libraries
//       allocations COUNT      at the program's end

#define _GNU_SOURCE

#include <dlfcn.h>
#include <errno.h>
#include <execinfo.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

// Never through dlsym, which allocates. Where a checker replaces the C library's malloc by address,
// it replaces these as well: they are the same functions.
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

typedef int Main(int argc, char** argv, char** environment);

static Main* program_main;
static long failing;
static int onwards;
static int counting;
static long count;

static void report(const char* text) {
    const char* path = getenv("KELP_FAULT_MEMORY_REPORT");
    const int file =
        path == NULL ? -1 : open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0 || write(file, text, strlen(text)) < 0) {
        abort();
    }
    close(file);
}

static const char* object_of(const void* address) {
    Dl_info info;
    if (dladdr(address, &info) == 0 || info.dli_fname == NULL) {
        return "unknown";
    }
    const char* slash = strrchr(info.dli_fname, '/');
    return slash == NULL ? info.dli_fname : slash + 1;
}

// Who asks, past those that only pass a request on.
static const char* caller(void) {
    static const char* const between[] = {"libc.so", "libstdc++.so", "libkelp_"};
    void* stack[64];
    const int depth = backtrace(stack, 64);
    for (int i = 0; i < depth; ++i) {
        const char* object = object_of(stack[i]);
        int passes_on = 0;
        for (size_t j = 0; j < sizeof between / sizeof *between; ++j) {
            passes_on |= strncmp(object, between[j], strlen(between[j])) == 0;
        }
        if (!passes_on) {
            return object;
        }
    }
    return "unknown";
}

static int fails(size_t size) {
    if (!counting) {
        return 0;
    }
    ++count;
    if (failing == 0 || count < failing || (count > failing && !onwards)) {
        return 0;
    }
    counting = 0;
    char line[256];
    snprintf(line, sizeof line, "failed %zu %s\n", size, caller());
    report(line);
    counting = 1;
    return 1;
}

void* malloc(size_t size) {
    if (fails(size)) {
        errno = ENOMEM;
        return NULL;
    }
    return __libc_malloc(size);
}

void* calloc(size_t number, size_t size) {
    if (fails(number * size)) {
        errno = ENOMEM;
        return NULL;
    }
    return __libc_calloc(number, size);
}

void* realloc(void* block, size_t size) {
    // Shrinking to nothing is no request.
    if (size > 0 && fails(size)) {
        errno = ENOMEM;
        return NULL;
    }
    return __libc_realloc(block, size);
}

static long number_of(const char* name) {
    const char* text = getenv(name);
    return text == NULL ? 0 : strtol(text, NULL, 10);
}

static int counted_main(int argc, char** argv, char** environment) {
    // The first one loads a library.
    void* frame;
    backtrace(&frame, 1);
    failing = number_of("KELP_FAULT_MEMORY");
    onwards = number_of("KELP_FAULT_MEMORY_ONWARDS") != 0;
    counting = 1;
    return program_main(argc, argv, environment);
}

__attribute__((destructor)) static void end(void) {
    counting = 0;
    char line[64];
    snprintf(line, sizeof line, "allocations %ld\n", count);
    report(line);
}

// What the program's start calls with its main.
int __libc_start_main(Main* main, int argc, char** argv, void (*init)(void), void (*fini)(void),
                      void (*loader_fini)(void), void* stack_end);
int __libc_start_main(Main* main, int argc, char** argv, void (*init)(void), void (*fini)(void),
                      void (*loader_fini)(void), void* stack_end) {
    program_main = main;
    // A function pointer out of dlsym is beyond ISO C, as the whole library is.
    __typeof__(&__libc_start_main) next =
        __extension__(__typeof__(&__libc_start_main)) dlsym(RTLD_NEXT, "__libc_start_main");
    return next(counted_main, argc, argv, init, fini, loader_fini, stack_end);
}
