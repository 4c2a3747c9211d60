#include <cups/raster.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>

#include "tests/reference/job/log.h"
#include "tests/reference/job/output.h"
#include "tests/reference/job/page.h"
#include "tests/reference/job/page_loop.h"
#include "tests/reference/job/settings.h"

namespace {

using reference::logLine;
using reference::Printer;
using reference::Settings;

int runJob(int input, const char* options) {
    Printer printer;
    Settings settings{};
    parseSettings(settings, options);

    std::unique_ptr<FILE, int (*)(FILE*)> recording(nullptr, fclose);
    if (settings.OutputFile[0] != 0) {
        recording.reset(
            reference::openRegular(settings.OutputFile, O_WRONLY | O_CREAT | O_TRUNC, "w"));
        logLine(0, "Filter data output to: %s", settings.OutputFile);
        if (recording != nullptr)
            printer.output.streams.push_back(recording.get());
    }

    if (static_cast<double>(settings.pageWidth) <= 1e-6 ||
        static_cast<double>(settings.pageHeight) <= 1e-6) {
        fprintf(stderr, "ERROR: Paper size must not less than 1.0 : (%f, %f)\n",
                static_cast<double>(settings.pageWidth), static_cast<double>(settings.pageHeight));
        return 1;
    }

    for (int i = 0; i < 64; i++)
        printer.output.byte(0x0A);

    cups_raster_t* raster = cupsRasterOpen(input, CUPS_RASTER_READ);
    int status = printPages(raster, printer, settings);
    cupsRasterClose(raster);
    return status;
}

}  // namespace

int main(int argc, char* argv[]) {
    reference::occupyClosedStandardDescriptors();
    signal(SIGPIPE, SIG_IGN);

    if (argc < 6) {
        const char* name = reference::basenameOf(argv[0]);
        fprintf(stderr, "%s v%s\n\nUsage:\n\n    %s job_id user title copyies options [file]\n\n",
                name, "3.13.13", name);
        return 1;
    }
    int input = 0;
    if (argc > 6 && argv[6] != nullptr) {
        input = open(argv[6], O_RDONLY);
        if (input < 0) {
            fprintf(stderr, "ERROR: Unable to open raster file - ");
            return 1;
        }
    }

    int status = runJob(input, argv[5]);
    if (input != 0)
        close(input);
    if (fflush(stdout) != 0 || ferror(stdout) != 0) {
        logLine(3, "Unable to write the printer data to standard output");
        status = 1;
    }
    return status;
}
