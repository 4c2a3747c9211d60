// kelp-printer-app: the drivers as an IPP printer, for whatever prints without drivers: tablets,
// phones, spoolers without PPDs. The framework has the subcommands; kelp-printer-app --help lists
// them.

#include <pappl/pappl.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "app/driver.h"
#include "app/server.h"
#include "filter/version.h"

namespace {

/// The framework would make a server to list them, and its folder.
int listDrivers(const std::vector<pappl_pr_driver_t>& drivers) {
    for (const pappl_pr_driver_t& driver : drivers) {
        std::printf("%s \"%s\" \"%s\"\n", driver.name, driver.description, driver.device_id);
    }
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char* argv[]) {
    std::vector<pappl_pr_driver_t> drivers = kelp_app::driverList();
    if (argc == 2 && std::string_view(argv[1]) == "drivers") {
        return listDrivers(drivers);
    }
    return papplMainloop(argc, argv, KELP_VERSION, nullptr, static_cast<int>(drivers.size()),
                         drivers.data(), kelp_app::recognizeDevice, kelp_app::describePrinter,
                         nullptr, nullptr, kelp_app::makeServer, nullptr, nullptr);
}
