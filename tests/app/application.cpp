#include "tests/app/application.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <stdexcept>

#include "tests/spooler/local_port.h"
#include "tests/spooler/wait_until.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

// One that nobody listens on now.
int free_port() {
    return port_of(bound_to_any_port());
}

bool is_answered(int port) {
    const Descriptor probe(socket(AF_INET, SOCK_STREAM, 0));
    const sockaddr_in address = local_address(port);
    return connect(probe.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

// The socket of the subcommands lies in the first for root, in the second for everyone else.
std::map<std::string, std::string> environment_of(const std::filesystem::path& directory) {
    return {{"SNAP_COMMON", directory},
            {"TMPDIR", directory},
            {"HOME", directory},
            {"PATH", "/usr/bin:/bin"},
            {"LC_ALL", "C.UTF-8"},
            // The framework's subcommands do not free their options.
            {"ASAN_OPTIONS", "detect_leaks=0"}};
}

}  // namespace

Command application_command(const std::filesystem::path& directory,
                            const std::vector<std::string>& arguments) {
    Command command;
    command.program = KELP_PRINTER_APP;
    command.arguments = arguments;
    command.environment = environment_of(directory);
    command.working_directory = directory;
    return command;
}

Application::Application(const std::vector<std::string>& options)
    : options_(options), port_(free_port()) {
    const bool is_about_questions =
        std::any_of(options.begin(), options.end(),
                    [](const std::string& option) { return option.starts_with("status-query="); });
    if (!is_about_questions) {
        options_.emplace_back("status-query=no");
    }
    for (int tries = 1;; ++tries) {
        try {
            start();
            return;
        } catch (const std::runtime_error&) {
            // Another test may have taken the port meanwhile.
            if (tries == 3) {
                throw;
            }
            port_ = free_port();
        }
    }
}

Application::~Application() {
    stop();
    if (testing::Test::HasFailure()) {
        ADD_FAILURE() << "the application's log:\n" << log();
    }
}

void Application::start() {
    std::vector<std::string> command = {"/usr/bin/env", "-i"};
    for (const auto& [name, value] : environment_of(directory_.path())) {
        command.push_back(name + "=" + value);
    }
    command.insert(command.end(),
                   {KELP_PRINTER_APP, "server", "-o", "server-port=" + std::to_string(port_), "-o",
                    "state-directory=" + state_folder().string(), "-o",
                    "log-file=" + file("log").string(), "-o", "log-level=debug"});
    for (const std::string& option : options_) {
        command.insert(command.end(), {"-o", option});
    }
    server_ = std::make_unique<BackgroundProcess>(command, file("output"));
    if (!wait_until([this] { return !server_->is_running() || is_answered(port_); }) ||
        !server_->is_running()) {
        throw std::runtime_error("the application does not run:\n" + read_file(file("output")));
    }
}

void Application::kill_and_restart() {
    server_->kill();
    start();
}

ProcessResult Application::run(const std::vector<std::string>& arguments) const {
    return run_process(application_command(directory_.path(), arguments));
}

void Application::add_printer(const std::string& name, const std::string& model,
                              const std::string& device) const {
    const ProcessResult added = run({"add", "-d", name, "-m", model, "-v", device});
    EXPECT_EQ(added.exit_status, 0) << added.error;
}

std::string Application::log() const {
    return std::filesystem::exists(file("log")) ? read_file(file("log")) : std::string();
}

}  // namespace kelp_test
