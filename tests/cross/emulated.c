// Stands in for a program that was built for another machine, where a test starts one: the emulator
// runs it under the same name, with the same arguments, descriptors and environment. scripts/cross
// compiles it with the paths
//
//   EMULATOR   the emulator
//   SYSROOT    the machine's libraries
//   PROGRAM    the program
//   WORLD      the machine's build of the library that the tests preload
//   MODEL      the processor; without it, the best that the emulator has

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

int main(int argc, char* argv[]) {
    const char* preloaded = getenv("LD_PRELOAD") != NULL ? "LD_PRELOAD=" WORLD : "KELP_EMULATED=1";
    char* const options[] = {EMULATOR, "-0", argv[0],          "-L",
                             SYSROOT,  "-E", (char*)preloaded, PROGRAM};
    const size_t count = sizeof options / sizeof options[0];
    char** command = calloc(count + (size_t)argc + 1, sizeof *command);
    if (command == NULL) {
        return 127;
    }
    memcpy(command, options, sizeof options);
    for (int i = 1; i < argc; ++i) {
        command[count + (size_t)i - 1] = argv[i];
    }
    unsetenv("LD_PRELOAD");  // is for this machine
#ifdef MODEL
    setenv("QEMU_CPU", MODEL, 1);
#endif
    execv(EMULATOR, command);
    fprintf(stderr, "%s: %s\n", EMULATOR, strerror(errno));
    return 127;
}
