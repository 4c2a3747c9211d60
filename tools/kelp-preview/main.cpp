// kelp-preview: shows what a printer stream prints, without a printer.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string_view>

#include "filter/standard_streams.h"
#include "filter/version.h"
#include "tools/kelp-preview/diff/diff_command.h"
#include "tools/kelp-preview/listen/listen_command.h"
#include "tools/kelp-preview/one_line.h"
#include "tools/kelp-preview/print/print_command.h"
#include "tools/kelp-preview/sheet/sheet_command.h"
#include "tools/kelp-preview/show/show_command.h"
#include "tools/kelp-preview/status.h"

namespace {

/// Programs that compare have a status of their own for trouble.
int failureStatus(int argc, char* argv[]) {
    return argc > 1 && std::string_view(argv[1]) == "diff" ? kStatusTrouble : kStatusFailed;
}

int reportFailure(const char* what, int status) {
    std::fprintf(stderr, "kelp-preview: %s\n", oneLine(what).c_str());
    return status;
}

int run(int argc, char* argv[], int failed) {
    CLI::App app("Shows what will print, without a printer", "kelp-preview");
    app.set_version_flag("--version", "kelp-preview " KELP_VERSION);
    app.require_subcommand(1);
    int status = kStatusDone;
    addShow(app, status);
    addSheet(app, status);
    addPrint(app, status);
    addDiff(app, status);
    addListen(app, status);
    try {
        app.parse(argc, argv);
        return status;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kStatusDone : failed;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return reportFailure(error.what(), failed);
    }
}

/// Memory may run out while the options are declared and while another failure is reported too.
int runWithinMemory(int argc, char* argv[], int failed) {
    try {
        return run(argc, argv, failed);
    } catch (const std::bad_alloc&) {
        std::fputs("kelp-preview: out of memory\n", stderr);
        return failed;
    } catch (const std::exception& error) {
        // An option that is declared twice, say.
        std::fprintf(stderr, "kelp-preview: %s\n", error.what());
        return failed;
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    secureStandardStreams();
    std::signal(SIGXFSZ, SIG_IGN);  // a picture over the limit fails and is removed
    const int failed = failureStatus(argc, argv);
    const int status = runWithinMemory(argc, argv, failed);
    std::cout.flush();
    if (!std::cout || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fputs("kelp-preview: unable to write to standard output\n", stderr);
        return failed;
    }
    return status;
}
