#include "app/supplies.h"

namespace kelp_app {

namespace {

constexpr int kUnknownLevel = -2;  // RFC 3805, prtMarkerSuppliesLevel

}  // namespace

void describeSupplies(pappl_printer_t* printer) {
    pappl_pr_driver_data_t data;
    papplPrinterGetDriverData(printer, &data);
    pappl_supply_t supply{};
    supply.color = PAPPL_SUPPLY_COLOR_NO_COLOR;
    supply.is_consumed = true;
    supply.level = kUnknownLevel;
    supply.type = PAPPL_SUPPLY_TYPE_OTHER;
    papplCopyString(supply.description,
                    (data.kind & PAPPL_KIND_LABEL) != 0 ? "Labels" : "Transfer paper",
                    sizeof supply.description);
    papplPrinterSetSupplies(printer, 1, &supply);
}

}  // namespace kelp_app
