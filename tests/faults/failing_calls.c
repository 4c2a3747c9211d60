// A library to be preloaded into a program under test. It changes what read or write do on one of
// the program's files, whoever calls: the C library's streams too, which no replaced function would
// reach. The kernel hands these system calls to a signal handler of ours.
//
//   KELP_FAULT_CALL=read or write
//   KELP_FAULT_FILE=NAME    0, 1 or 2 for a standard stream, else a part of the file's path
//   KELP_FAULT_ERROR=N      the error that a failing call gives, an errno number
//   KELP_FAULT_ONCE=N       the N-th call fails, and no other
//   KELP_FAULT_EVERY=1      every second call fails, beginning with the first
//   KELP_FAULT_BEHIND=N     once N bytes went through, every call fails; what reaches beyond is cut
//   KELP_FAULT_LIMIT=N      a call moves N bytes at most
//   KELP_FAULT_REPORT=FILE  at the program's end, a line "calls N bytes N changed N"

#define _GNU_SOURCE

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

// In the sixth argument, which read and write do not have: a call of our own, to be let through.
#define OURS 0x6b656c70u

static int call;
static const char* file;
static long error_number;
static long once;
static long every;
static long behind = -1;
static long limit;

static long calls;
static long bytes;
static long changed;

static long through(long descriptor, long buffer, long size) {
    const long result = syscall(call, descriptor, buffer, size, 0L, 0L, (long)OURS);
    return result < 0 ? -errno : result;
}

static int is_the_file(int descriptor) {
    if (file[0] >= '0' && file[0] <= '2' && file[1] == '\0') {
        return descriptor == file[0] - '0';
    }
    char link[32];
    char path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0) {
        return 0;
    }
    path[length] = '\0';
    return strstr(path, file) != NULL;
}

// What the program sees: a byte count, or an error number below 0.
static long changed_call(long descriptor, long buffer, long size) {
    if (!is_the_file((int)descriptor)) {
        return through(descriptor, buffer, size);
    }
    ++calls;
    if (calls == once || (every && calls % 2 == 1) || (behind >= 0 && bytes >= behind)) {
        ++changed;
        return -error_number;
    }
    long allowed = size;
    if (behind >= 0 && allowed > behind - bytes) {
        allowed = behind - bytes;
    }
    if (limit > 0 && allowed > limit) {
        allowed = limit;
    }
    changed += allowed < size;
    const long result = through(descriptor, buffer, allowed);
    bytes += result > 0 ? result : 0;
    return result;
}

static void on_call(int signal, siginfo_t* info, void* context) {
    (void)signal;
    (void)info;
    const int saved = errno;
    ucontext_t* state = context;
#if defined(__x86_64__)
    greg_t* registers = state->uc_mcontext.gregs;
    registers[REG_RAX] = changed_call(registers[REG_RDI], registers[REG_RSI], registers[REG_RDX]);
#elif defined(__aarch64__)
    __typeof__(state->uc_mcontext.regs[0])* registers = state->uc_mcontext.regs;
    registers[0] =
        (uint64_t)changed_call((long)registers[0], (long)registers[1], (long)registers[2]);
#else
#error "the registers of this processor are not known here"
#endif
    errno = saved;
}

static void trap_call(void) {
    struct sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (uint32_t)call, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, args[5])),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, OURS, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const struct sock_fprog filter = {sizeof program / sizeof *program, program};
    struct sigaction action = {.sa_sigaction = on_call, .sa_flags = SA_SIGINFO | SA_NODEFER};
    if (sigaction(SIGSYS, &action, NULL) != 0 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0) {
        static const char text[] = "failing_calls: this system does not let calls be caught\n";
        if (write(STDERR_FILENO, text, sizeof text - 1) < 0) {
            abort();
        }
        _exit(98);
    }
}

static long number_of(const char* name, long none) {
    const char* text = getenv(name);
    return text == NULL ? none : strtol(text, NULL, 10);
}

__attribute__((constructor)) static void begin(void) {
    const char* name = getenv("KELP_FAULT_CALL");
    file = getenv("KELP_FAULT_FILE");
    if (name == NULL || file == NULL) {
        return;
    }
    call = strcmp(name, "read") == 0 ? SYS_read : SYS_write;
    error_number = number_of("KELP_FAULT_ERROR", EIO);
    once = number_of("KELP_FAULT_ONCE", 0);
    every = number_of("KELP_FAULT_EVERY", 0);
    behind = number_of("KELP_FAULT_BEHIND", -1);
    limit = number_of("KELP_FAULT_LIMIT", 0);
    trap_call();
}

__attribute__((destructor)) static void end(void) {
    const char* path = getenv("KELP_FAULT_REPORT");
    if (path == NULL || file == NULL) {
        return;
    }
    char line[96];
    const int length =
        snprintf(line, sizeof line, "calls %ld bytes %ld changed %ld\n", calls, bytes, changed);
    const int out = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    // The path may hold the name of the file that is looked after.
    if (out < 0 || syscall(SYS_write, out, line, (long)length, 0L, 0L, (long)OURS) != length) {
        abort();
    }
    close(out);
}
