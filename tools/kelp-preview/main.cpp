// kelp-preview: shows what a printer stream prints, without a printer.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <new>

#include "filter/standard_streams.h"
#include "filter/version.h"
#include "tools/kelp-preview/listen/listen_command.h"
#include "tools/kelp-preview/show/show_command.h"
#include "tools/kelp-preview/status.h"

namespace {

int run(int argc, char* argv[]) {
    CLI::App app("Shows what a printer stream prints, without a printer", "kelp-preview");
    app.set_version_flag("--version", "kelp-preview " KELP_VERSION);
    app.require_subcommand(1);
    int status = kStatusDone;
    addShow(app, status);
    addListen(app, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kStatusDone : kStatusFailed;
    }
    return status;
}

int reportFailure(const char* what) {
    std::fprintf(stderr, "kelp-preview: %s\n", what);
    return kStatusFailed;
}

int runReported(int argc, char* argv[]) {
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        return reportFailure("out of memory");
    } catch (const std::exception& error) {
        return reportFailure(error.what());
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    secureStandardStreams();
    std::signal(SIGXFSZ, SIG_IGN);  // a picture over the limit fails and is removed
    const int status = runReported(argc, argv);
    std::cout.flush();
    if (!std::cout || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        return reportFailure("unable to write to standard output");
    }
    return status;
}
