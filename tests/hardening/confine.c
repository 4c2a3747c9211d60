// A library to be preloaded: once it is loaded, the kernel kills the process when it starts another
// process or program or makes a socket.

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <stddef.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#define KILL_AT(call)                                  \
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, (call), 0, 1), \
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS)

static struct sock_filter rules[] = {
    BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
    KILL_AT(SYS_execve),
    KILL_AT(SYS_execveat),
#ifdef SYS_fork  // newer processors have only clone
    KILL_AT(SYS_fork),
    KILL_AT(SYS_vfork),
#endif
    KILL_AT(SYS_clone),
    KILL_AT(SYS_clone3),
    KILL_AT(SYS_socket),
    KILL_AT(SYS_socketpair),
    KILL_AT(SYS_io_uring_setup),
    KILL_AT(SYS_ptrace),
    BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
};

__attribute__((constructor)) static void confine(void) {
    const struct sock_fprog program = {sizeof(rules) / sizeof(rules[0]), rules};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
        abort();  // better no answer than one without the confinement
    }
}
