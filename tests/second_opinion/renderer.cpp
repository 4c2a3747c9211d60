#include "tests/second_opinion/renderer.h"

#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tests/support/files.h"
#include "tests/support/run_process.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

const fs::path sources = KELP_SECOND_OPINION_DIR;
const fs::path installation = KELP_RENDERER_DIR;

// A program of the caller's PATH, in the caller's environment: it tells npm whom to ask.
ProcessResult run(std::vector<std::string> arguments) {
    Command command;
    command.program = "/usr/bin/env";
    command.arguments = std::move(arguments);
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string text = *variable;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos) {
            command.environment[text.substr(0, equals)] = text.substr(equals + 1);
        }
    }
    command.environment.insert_or_assign("npm_config_cache", installation / "cache");
    command.environment.insert_or_assign("npm_config_fetch_retries", "0");
    command.environment.insert_or_assign("npm_config_update_notifier", "false");
    command.working_directory = installation;
    command.time_limit = std::chrono::minutes(3);
    return run_process(command);
}

// The first line that tells of an error; npm's names no host there.
std::string first_error(const ProcessResult& result) {
    std::istringstream lines(result.error);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("npm ERR!") || line.starts_with("npm error")) {
            return line;
        }
    }
    return result.ending();
}

bool is_installed() {
    // npm writes the hidden one last
    return fs::exists(installation / "node_modules/.package-lock.json") &&
           fs::exists(installation / "package-lock.json") &&
           read_file(installation / "package-lock.json") ==
               read_file(sources / "package-lock.json");
}

std::string obstacle() {
    for (const std::string program : {"node", "npm"}) {
        if (program == "npm" && is_installed()) {
            return {};
        }
        if (run({program, "--version"}).exit_status != 0) {
            return program +
                   " is not installed (it is not installed for this alone: in Debian npm "
                   "comes as some 360 packages)";
        }
    }
    const auto package = nlohmann::json::parse(read_file(sources / "package.json"));
    for (const auto& [name, version] : package["dependencies"].items()) {
        const ProcessResult asked =
            run({"npm", "view", name + "@" + version.get<std::string>(), "version"});
        if (asked.exit_status != 0) {
            return "npm does not answer: " + first_error(asked);
        }
    }
    return {};
}

void install() {
    for (const char* file : {"package.json", "package-lock.json"}) {
        write_file(installation / file, read_file(sources / file));
    }
    const ProcessResult result = run({"npm", "ci", "--ignore-scripts", "--no-audit", "--no-fund"});
    if (result.exit_status != 0) {
        throw std::runtime_error("npm ci: " + result.ending() + "\n" + result.error);
    }
}

}  // namespace

Renderer::Renderer() {
    fs::create_directories(installation);
    why_not_ = obstacle();
    if (why_not_.empty() && !is_installed()) {
        install();
    }
}

Picture Renderer::draw(const std::string& stream, std::size_t number, std::size_t width,
                       std::size_t height) const {
    const TempDir dir;
    write_file(dir / "stream.zpl", stream);
    const ProcessResult result =
        run({"node", sources / "draw.js", installation / "node_modules", dir / "stream.zpl",
             std::to_string(width), std::to_string(height), dir / "label"});
    if (result.exit_status != 0) {
        throw std::runtime_error(result.ending() + "\n" + result.error);
    }
    return read_png(dir / ("label-" + std::to_string(number) + ".png"));
}

}  // namespace kelp_test
