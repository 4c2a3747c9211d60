// Tries what the confinement forbids, in the way that its argument names. Ends with 0 when it is
// let.

#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

int main(int count, char* arguments[]) {
    const char* way = count == 2 ? arguments[1] : "";
    if (strcmp(way, "nothing") == 0) {
        return 0;
    }
    if (strcmp(way, "fork") == 0) {
        const pid_t child = fork();
        if (child == 0) {
            _exit(0);
        }
        return child < 0;
    }
    if (strcmp(way, "shell") == 0) {
        return system("true") != 0;
    }
    if (strcmp(way, "exec") == 0) {
        execl("/bin/true", "true", (char*)NULL);
    }
    if (strcmp(way, "socket") == 0) {
        return socket(AF_INET, SOCK_STREAM, 0) < 0;
    }
    if (strcmp(way, "local socket") == 0) {
        return socket(AF_UNIX, SOCK_STREAM, 0) < 0;
    }
    return 2;
}
