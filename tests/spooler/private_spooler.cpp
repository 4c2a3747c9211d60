#include "tests/spooler/private_spooler.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

fs::path find_program(const std::string& name) {
    for (const char* folder : {"/usr/bin", "/usr/sbin", "/bin", "/sbin"}) {
        if (fs::exists(fs::path(folder) / name)) {
            return fs::path(folder) / name;
        }
    }
    throw std::runtime_error("not installed: " + name);
}

// The environment a program was started with, its strings separated by NUL; empty for a program
// that has ended or is another user's.
std::string environment_of(const fs::path& process) {
    std::ifstream file(process / "environ", std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

std::string command_line_of(const fs::path& process) {
    std::ifstream file(process / "cmdline", std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    std::string line = content.str();
    std::replace(line.begin(), line.end(), '\0', ' ');
    return process.filename().string() + ": " + line;
}

bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

PrivateSpooler::PrivateSpooler()
    : daemon_({folders_.daemon().string(), "-f", "-c", folders_.configuration().string(), "-s",
               folders_.files_configuration().string()},
              folders_.console()) {
    const bool started =
        wait_until([this] { return !daemon_.is_running() || answers(folders_.socket()); });
    if (!started || !daemon_.is_running()) {
        const bool has_log = fs::exists(folders_.error_log());
        throw std::runtime_error("the spooler does not start:\n" + read_file(folders_.console()) +
                                 (has_log ? read_file(folders_.error_log()) : std::string()));
    }
}

PrivateSpooler::~PrivateSpooler() {
    daemon_.stop();
}

ProcessResult PrivateSpooler::run(const std::vector<std::string>& words) const {
    Command command;
    command.program = find_program(words.at(0));
    command.arguments.assign(words.begin() + 1, words.end());
    command.working_directory = folders_.extras();
    command.environment = {{"CUPS_SERVER", folders_.socket().string()},
                           {"CUPS_SERVERROOT", folders_.client_settings().string()},
                           {"HOME", folders_.client_settings().string()},
                           {"PATH", "/usr/bin:/usr/sbin:/bin:/sbin"},
                           {"LC_ALL", "C.UTF-8"}};
    return run_process(command);
}

void PrivateSpooler::add_queue(const std::string& name, const fs::path& ppd,
                               const std::string& device,
                               const std::vector<std::string>& more) const {
    std::vector<std::string> command{"lpadmin", "-p", name, "-E", "-v", device, "-P", ppd.string()};
    command.insert(command.end(), more.begin(), more.end());
    const ProcessResult result = run(command);
    if (result.exit_status != 0) {
        throw std::runtime_error("lpadmin: " + result.ending() + "\n" + result.error);
    }
}

std::optional<int> PrivateSpooler::try_to_print(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{"lp"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const ProcessResult result = run(command);
    // "request id is QUEUE-NUMBER (1 file(s))"
    const std::size_t end = result.output.find(" (");
    const std::size_t start = result.output.rfind('-', end);
    if (result.exit_status != 0 || end == std::string::npos || start == std::string::npos) {
        return {};
    }
    return std::stoi(result.output.substr(start + 1, end - start - 1));
}

int PrivateSpooler::print(const std::vector<std::string>& arguments) const {
    const std::optional<int> number = try_to_print(arguments);
    if (!number) {
        throw std::runtime_error("lp did not take the job");
    }
    return *number;
}

JobStatus PrivateSpooler::wait_for(int number) const {
    JobStatus status;
    if (!wait_until([&] {
            status = job(number);
            return status.is_at_rest();
        })) {
        throw std::runtime_error("job " + std::to_string(number) + " does not end\n" +
                                 log_of(number));
    }
    return status;
}

std::string PrivateSpooler::log_of(int number) const {
    const std::string mark = "[Job " + std::to_string(number) + "] ";
    std::ifstream log(folders_.error_log());
    std::string lines;
    for (std::string line; std::getline(log, line);) {
        const std::size_t position = line.find(mark);
        if (position != std::string::npos) {
            lines += line.substr(0, 2) + line.substr(position + mark.size()) + "\n";
        }
    }
    return lines;
}

std::vector<std::string> PrivateSpooler::running_programs() const {
    // The daemon gives this variable to every program it starts, and they to theirs.
    const std::string mark = "CUPS_SERVERROOT=" + folders_.root().string() + "/etc";
    std::vector<std::string> programs;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        if (is_number(entry.path().filename().string()) &&
            environment_of(entry.path()).find(mark) != std::string::npos) {
            programs.push_back(command_line_of(entry.path()));
        }
    }
    return programs;
}

}  // namespace kelp_test
