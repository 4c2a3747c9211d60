#ifndef KELP_APP_PRINTER_STATUS_H
#define KELP_APP_PRINTER_STATUS_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Renews the reasons of a printer's state, when somebody looks: takes over what the printer has
/// answered since the last look, and asks it anew, in a thread that is not waited for. The
/// framework calls it only while no job is printed. A pappl_pr_status_cb_t; always true.
///
/// Only printers on the network are asked. One that takes the question and does not answer within
/// 300 ms is left alone for ten minutes.
bool lookAtPrinter(pappl_printer_t* printer);

/// Whether printers are asked at all; else lookAtPrinter() does nothing. Before the server runs.
void askPrinters(bool areAsked);

}  // namespace kelp_app

#endif
