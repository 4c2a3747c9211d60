#include "tools/kelp-preview/print/print_command.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "pictures/run_command.h"
#include "preview/whole_file.h"
#include "tools/kelp-preview/progress.h"
#include "tools/kelp-preview/show/show_labels.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kLargestStream = 1'000'000'000;

struct PrintJob {
    std::string file;
    std::string ppd;
    std::vector<std::string> options;
    unsigned copies = 1;
    std::string type;     ///< empty to find out
    std::string spooler;  ///< its cups-files.conf; empty for the system's
    std::string stream;   ///< file to write the printer's commands to; empty for none
    std::string log;      ///< likewise, for what the filters say
    LabelOutput output;
};

std::vector<std::string> commandOf(const PrintJob& job) {
    // -e: up to the PPD's own filter; without it cupsfilter ends before the raster.
    std::vector<std::string> command{"cupsfilter", "-e", "-p", job.ppd, "-m", "printer/kelp"};
    const auto add = [&](const char* option, const std::string& value) {
        if (!value.empty()) {
            command.insert(command.end(), {option, value});
        }
    };
    add("-c", job.spooler);
    add("-i", job.type);
    add("-n", job.copies == 1 ? std::string() : std::to_string(job.copies));
    add("-t", fs::path(job.file).stem().string());
    for (const std::string& option : job.options) {
        add("-o", option);
    }
    // Absolute: no name is taken for an option.
    command.push_back(fs::absolute(job.file).string());
    return command;
}

/// Not the lines that only tell which program ended.
bool tellsWhy(const std::string& line) {
    const bool isError =
        line.starts_with("ERROR:") || line.starts_with("CRIT:") || line.starts_with("EMERG:");
    return isError && line.find(" stopped with status ") == std::string::npos;
}

/// The last of the lines that tell of an error; of a command that failed without any, the last.
std::string reason(const CommandResult& result) {
    std::istringstream lines(result.errors);
    std::string found = result.status == 0 ? std::string() : result.lastError;
    for (std::string line; std::getline(lines, line);) {
        found = tellsWhy(line) ? line : found;
    }
    return found.empty() ? "" : ": " + found;
}

int print(const PrintJob& job) {
    if (!fs::is_regular_file(job.file)) {
        throw std::runtime_error("no regular file: " + job.file);
    }
    Progress progress;
    const CommandResult result =
        runCommand(commandOf(job), kLargestStream, [&] { progress.show("printing " + job.file); });
    if (!job.log.empty()) {
        kelp_preview::writeWholeFile(job.log, result.errors);
    }
    if (result.status != 0) {
        throw std::runtime_error(job.file + " is not printed" + reason(result));
    }
    if (result.output.find("~DG") == std::string::npos) {
        throw std::runtime_error(job.file + " has no page that prints" + reason(result));
    }
    if (result.output.size() >= kLargestStream) {
        throw std::runtime_error(job.file + " gives over 1 GB of printer commands");
    }
    if (!job.stream.empty()) {
        kelp_preview::writeWholeFile(job.stream, result.output);
    }
    std::stringbuf stream(result.output);
    return showLabels(stream, job.file, job.output, progress);
}

}  // namespace

void addPrint(CLI::App& app, int& status) {
    const auto job = std::make_shared<PrintJob>();
    CLI::App* command =
        app.add_subcommand("print", "Take a document through all filters of a queue to its labels");
    command->add_option("FILE", job->file, "The document, of any type that the spooler prints")
        ->required();
    command->add_option("--ppd", job->ppd, "The queue's driver")
        ->required()
        ->type_name("PPD")
        ->check(CLI::ExistingFile);
    command->add_option("-o", job->options, "A job option as lp takes it; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command->add_option("--copies", job->copies, "Copies")
        ->type_name("N")
        ->check(CLI::Range(1U, 99'999'999U))
        ->capture_default_str();
    command->add_option("--type", job->type, "The document's media type, rather than to find out")
        ->type_name("TYPE");
    command->add_option("--stream", job->stream, "Write the printer's commands to this file")
        ->type_name("OUT.zpl");
    command->add_option("--log", job->log, "Write what the filters say to this file")
        ->type_name("FILE");
    command
        ->add_option("--cups-files", job->spooler,
                     "The cups-files.conf of the spooler whose filters run")
        ->type_name("CONF")
        ->check(CLI::ExistingFile);
    addLabelOutputOptions(*command, "--output", job->output);
    command->callback([job, &status] { status = print(*job); });
}
