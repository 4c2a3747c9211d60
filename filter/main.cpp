// rastertokelp: started by the spooler once a job, as
//
//     rastertokelp job_id user title copies options [file]
//
// It reads CUPS raster from the file or standard input, takes its settings from the PPD named by
// the environment variable PPD, and writes printer commands to standard output.

#include <cups/raster.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

#include "filter/log.h"
#include "filter/memory_checked.h"
#include "filter/output_file.h"
#include "filter/page.h"
#include "filter/page_loop.h"
#include "filter/published_printer.h"
#include "filter/settings.h"
#include "filter/standard_streams.h"
#include "filter/text.h"
#include "filter/version.h"
#include "printer/zpl_printer.h"

namespace {

constexpr double kSmallestPage = 1e-6;  // millimetres, whatever the message says

void printUsage(const char* program) {
    const char* name = kelpPathGetBasename(program);
    std::fprintf(stderr, "%s v%s\n\nUsage:\n\n    %s job_id user title copyies options [file]\n\n",
                 name, KELP_VERSION, name);
}

/// The raster input; standard input is never closed.
class Input {
  public:
    Input() = default;
    explicit Input(const char* path) : descriptor_(open(path, O_RDONLY | O_CLOEXEC)) {}
    ~Input() {
        if (descriptor_ > STDIN_FILENO) {
            close(descriptor_);
        }
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }

  private:
    int descriptor_ = STDIN_FILENO;
};

struct CloseRaster {
    void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};

using OwnedRaster = std::unique_ptr<cups_raster_t, CloseRaster>;

/// Null for what is no raster stream.
OwnedRaster openRaster(int descriptor) {
    return memoryChecked([&] { return OwnedRaster(cupsRasterOpen(descriptor, CUPS_RASTER_READ)); });
}

/// A recording that cannot be opened is left out; the job goes on without it.
OwnedFile startRecording(const char* path, KelpPrinter& printer) {
    OwnedFile recording = openOutputFile(path, "w");
    kelpLogCommon(0, "Filter data output to: %s", path);
    if (recording) {
        printer.getOutputStreams().push_back(recording.get());
    }
    return recording;
}

bool isPageSizeKnown(const Settings& settings) {
    const auto width = static_cast<double>(settings.pageWidth);
    const auto height = static_cast<double>(settings.pageHeight);
    if (width <= kSmallestPage || height <= kSmallestPage) {
        std::fprintf(stderr, "ERROR: Paper size must not less than 1.0 : (%f, %f)\n", width,
                     height);
        return false;
    }
    return true;
}

int runJob(const char* options, const Input& input) {
    const auto printer = std::make_unique<ZplPrinter>();
    OwnedFile recording;
    const PublishedPrinter published(printer.get());

    Settings settings{};
    parseSettings(settings, options);
    if (settings.OutputFile[0] != '\0') {
        recording = startRecording(settings.OutputFile, *printer);
    }
    if (!isPageSizeKnown(settings)) {
        return EXIT_FAILURE;
    }
    startPages(*printer);
    const OwnedRaster raster = openRaster(input.descriptor());
    return printPages(raster.get(), settings, *printer);
}

int run(int argc, char* argv[]) {
    if (argc < 6) {
        printUsage(argv[0]);
        return EXIT_FAILURE;
    }
    const bool fromFile = argc > 6 && argv[6] != nullptr;
    const Input input = fromFile ? Input(argv[6]) : Input();
    if (!input.isOpen()) {
        std::fputs("ERROR: Unable to open raster file - ", stderr);
        return EXIT_FAILURE;
    }
    try {
        return runJob(argv[5], input);
    } catch (const std::bad_alloc&) {
        kelpLogCommon(3, "Out of memory, the job ends here!");
        return EXIT_FAILURE;
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    secureStandardStreams();
    return finishStandardOutput(run(argc, argv));
}
