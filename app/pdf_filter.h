#ifndef KELP_APP_PDF_FILTER_H
#define KELP_APP_PDF_FILTER_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Prints PDF documents, drawn by ghostscript within limits of time, memory and pages. Once, before
/// the server runs.
void addPdfFilter(pappl_system_t* system);

}  // namespace kelp_app

#endif
