#include "tests/malformed/malformed_job.h"

#include <ostream>
#include <sstream>

namespace kelp_test {
namespace {

Job tiny_job() {
    return job_of({tiny_page()});
}

// Long texts are shown by their ends.
std::string shown(const std::string& text) {
    constexpr std::size_t most = 2000;
    return text.size() <= most
               ? text
               : text.substr(0, most / 2) + "\n[...]\n" + text.substr(text.size() - most / 2);
}

}  // namespace

void PrintTo(const MalformedJob& row, std::ostream* out) {
    *out << row.name;
}

ResourceLimit processor_time() {
    return {RLIMIT_CPU, KELP_SANITIZED ? rlim_t{10} : rlim_t{1}};
}

std::string complaints(const std::string& log) {
    std::string all;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && !line.starts_with("DEBUG:")) {
            all += all.empty() ? line : "\n" + line;
        }
    }
    return all;
}

void expect_as_in(const MalformedJob& row) {
    const Sandbox sandbox;
    Command command = row.make(sandbox);
    command.limits.push_back(processor_time());
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, row.status) << shown(result.error);
    EXPECT_EQ(complaints(result.error), row.message);
    EXPECT_TRUE(result.output == row.output) << "printed:\n"
                                             << shown(result.output) << "\nexpected:\n"
                                             << shown(row.output);
}

Spoil raster(const std::string& stream) {
    return [stream](const Sandbox& sandbox) {
        Job job = tiny_job();
        job.raster = stream;
        return sandbox.command(job);
    };
}

Spoil ppd_with_options(const std::string& text, const std::string& options) {
    return [text, options](const Sandbox& sandbox) {
        Job job = tiny_job();
        job.ppd = text;
        job.options = options;
        return sandbox.command(job);
    };
}

Spoil made_late(const std::function<Spoil()>& make) {
    return [make](const Sandbox& sandbox) { return make()(sandbox); };
}

Spoil ppd(const std::string& text) {
    return ppd_with_options(text, "");
}

Spoil ppd_path(const std::string& path) {
    return [path](const Sandbox& sandbox) {
        Command command = sandbox.command(tiny_job());
        command.environment["PPD"] = path;
        return command;
    };
}

Spoil options(const std::string& text) {
    return ppd_with_options(bare_ppd().text(), text);
}

Spoil arguments(const std::vector<std::string>& all) {
    return [all](const Sandbox& sandbox) {
        Command command = sandbox.command(tiny_job());
        command.arguments = all;
        return command;
    };
}

}  // namespace kelp_test
