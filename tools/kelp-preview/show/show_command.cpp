#include "tools/kelp-preview/show/show_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "tools/kelp-preview/input.h"
#include "tools/kelp-preview/progress.h"
#include "tools/kelp-preview/show/show_labels.h"

namespace {

struct ShowOptions {
    std::string file = "-";
    LabelOutput output;
};

int show(const ShowOptions& options) {
    Progress progress;
    Input input(options.file, progress);
    return showLabels(input, input.shownName(), options.output, progress);
}

}  // namespace

void addShow(CLI::App& app, int& status) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App* command = app.add_subcommand("show", "Decode a printer stream: describe its labels");
    command->add_option("FILE", options->file, "The stream; standard input for - or without it");
    addLabelOutputOptions(*command, "-o,--output", options->output);
    command->callback([options, &status] { status = show(*options); });
}
