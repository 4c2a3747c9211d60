#include "tools/kelp-preview/listen/listen_command.h"

#include <CLI/CLI.hpp>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

#include "tools/kelp-preview/listen/listen_options.h"
#include "tools/kelp-preview/listen/virtual_printer.h"
#include "tools/kelp-preview/status.h"

namespace {

using kelp_listen::ListenOptions;

template <typename Number>
void addLimit(CLI::App& command, const char* name, Number& value, std::uint64_t most,
              const char* type, const char* help) {
    command.add_option(name, value, help)
        ->type_name(type)
        ->check(CLI::Range(std::uint64_t{1}, most))
        ->capture_default_str();
}

void addPort(CLI::App& command, const char* name, std::uint16_t& port, const char* help) {
    command.add_option(name, port, help)
        ->type_name("N")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
}

void addAddress(CLI::App& command, const char* name, std::string& address, const char* help) {
    command.add_option(name, address, help)->type_name("IP")->capture_default_str();
}

}  // namespace

void addListen(CLI::App& app, int& status) {
    const auto shared = std::make_shared<ListenOptions>();
    ListenOptions& options = *shared;
    CLI::App& command = *app.add_subcommand(
        "listen", "Be a label printer on the network: store jobs and show them on a web page");
    addAddress(command, "--address", options.address, "Take jobs on this IPv4 or IPv6 address");
    addPort(command, "--port", options.port, "Take jobs on this port; 0: the system chooses one");
    command
        .add_option("-o,--output", options.folder,
                    "Store jobs in this folder, job-0001 and so on; made if it is not there")
        ->type_name("DIR")
        ->capture_default_str();
    addAddress(command, "--web-address", options.webAddress, "Show the web page on this address");
    addPort(command, "--web-port", options.webPort,
            "Show the web page on this port; 0: the system chooses one");
    addLimit(command, "--max-connections", options.receiver.connections, 256, "N",
             "Take so many jobs at a time; others wait in line");
    addLimit(command, "--max-job-size", options.receiver.jobBytes, std::uint64_t{1} << 40, "BYTES",
             "Refuse larger jobs");
    addLimit(command, "--idle-time", options.receiver.idleSeconds, 86400, "SECONDS",
             "End the job of a sender that is silent for so long");
    addLimit(command, "--max-dots", options.drawing.maxDots, kelp_preview::kMostDots, "N",
             "Draw no labels with more dots");
    addLimit(command, "--max-labels", options.drawing.labels, 1'000'000, "N",
             "Draw so many labels of a job at most");
    addLimit(command, "--keep", options.keep, 1'000'000, "N",
             "Keep so many jobs of this run; older ones are removed");
    command.callback([shared, &status] {
        kelp_listen::runVirtualPrinter(*shared);
        status = kStatusDone;
    });
}
