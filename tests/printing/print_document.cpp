#include "tests/printing/print_document.h"

#include <stdexcept>

#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

std::string checked_output(const Command& command) {
    const ProcessResult result = run_process(command);
    if (result.exit_status != 0) {
        throw std::runtime_error(command.program.string() + ": " + result.ending() + "\n" +
                                 result.error);
    }
    return result.output;
}

}  // namespace

std::string print_document(const std::filesystem::path& document, const std::string& model,
                           const std::string& job_options) {
    const TempDir directory;
    const std::string ppd = std::string(KELP_PPD_DIR) + "/kelp-" + model + ".ppd";
    std::filesystem::create_directories(directory / "var/spool/cups/tmp");
    std::filesystem::create_directories(directory / "tmp");

    Command rasterise;
    rasterise.program = KELP_CUPSFILTER;
    rasterise.arguments = {"-p",
                           ppd,
                           "-i",
                           "application/postscript",
                           "-m",
                           "application/vnd.cups-raster",
                           "-o",
                           job_options,
                           document.string()};
    rasterise.environment = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"},
                             {"TMPDIR", directory.path().string()},
                             {"HOME", directory.path().string()},
                             {"LC_ALL", "C"}};
    rasterise.working_directory = directory.path();

    Command fit;
    fit.program = KELP_PAGE_FITTER;
    fit.arguments = {"1", "user", "title", "1", job_options};
    // The world library keeps the filter's snapshots in our directory.
    fit.environment = {{"PPD", ppd},
                       {"LD_PRELOAD", KELP_TEST_WORLD_LIBRARY},
                       {"ASAN_OPTIONS", "verify_asan_link_order=0"},
                       {"KELP_TEST_WORLD", directory.path().string()}};
    fit.working_directory = directory.path();
    Command print = fit;
    print.program = KELP_FILTER;

    fit.input = FromBytes{checked_output(rasterise)};
    print.input = FromBytes{checked_output(fit)};
    return checked_output(print);
}

}  // namespace kelp_test
