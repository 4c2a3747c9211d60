#include "filter/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "filter/log.h"

void secureStandardStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) == -1) {
            // The lowest free descriptor is this one. The wrong way round, so that its use fails
            // as that of a closed one does.
            if (open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY) != descriptor) {
                std::_Exit(EXIT_FAILURE);  // no log can be told where it would go
            }
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    // All filters of a job share one log: a line that comes in pieces is torn by the others' lines.
    std::setvbuf(stderr, nullptr, _IOLBF, BUFSIZ);
}

int finishStandardOutput(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        kelpLogCommon(3, "Unable to write the printer data to standard output");
        return EXIT_FAILURE;
    }
    return status;
}
