// kelp-printer-app: the drivers as an IPP printer, for whatever prints without drivers: tablets,
// phones, spoolers without PPDs. The framework has the subcommands; kelp-printer-app --help lists
// them.

#include <pappl/pappl.h>

#include "app/driver.h"
#include "app/server.h"
#include "filter/version.h"

int main(int argc, char* argv[]) {
    std::vector<pappl_pr_driver_t> drivers = kelp_app::driverList();
    return papplMainloop(argc, argv, KELP_VERSION, nullptr, static_cast<int>(drivers.size()),
                         drivers.data(), kelp_app::recognizeDevice, kelp_app::describePrinter,
                         nullptr, nullptr, kelp_app::makeServer, nullptr, nullptr);
}
