// rastertokelpraster: brings any raster to the page that the driver is set to, before rastertokelp.
// Started by the spooler once a job, as
//
//     rastertokelpraster job_id user title copies options [file]
//
// It reads CUPS raster from the file or standard input, takes the page from the PPD named by the
// environment variable PPD, and writes CUPS raster to standard output.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "filter/log.h"
#include "filter/standard_streams.h"
#include "filter/text.h"
#include "fitter/fit_error.h"
#include "fitter/page_fitter.h"

namespace {

int openInput(const char* path) {
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        throw FitError("Unable to open the raster file \"" + std::string(path) +
                       "\": " + std::strerror(errno) + ".");
    }
    return descriptor;
}

void run(int argc, char* argv[]) {
    if (argc != 6 && argc != 7) {
        const char* name = argc > 0 ? kelpPathGetBasename(argv[0]) : "rastertokelpraster";
        throw FitError("Usage: " + std::string(name) + " job_id user title copies options [file]");
    }
    const TargetPage target = readTargetPage(std::getenv("PPD"), argv[5]);
    // Not closed: the process ends with the job.
    RasterInput input(argc == 7 ? openInput(argv[6]) : STDIN_FILENO);
    RasterOutput output(STDOUT_FILENO);
    fitPages(input, target, output);
    output.close();
}

}  // namespace

int main(int argc, char* argv[]) {
    secureStandardStreams();
    try {
        run(argc, argv);
        return EXIT_SUCCESS;
    } catch (const ReaderGone& error) {
        kelpLogCommon(0, " %s", error.what());
    } catch (const FitError& error) {
        kelpLogCommon(3, " %s", error.what());
    } catch (const std::bad_alloc&) {
        kelpLogCommon(3, " Out of memory, the job ends here.");
    }
    return EXIT_FAILURE;
}
