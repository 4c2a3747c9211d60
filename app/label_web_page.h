#ifndef KELP_APP_LABEL_WEB_PAGE_H
#define KELP_APP_LABEL_WEB_PAGE_H

#include <pappl/pappl.h>

namespace kelp_app {

/// Adds to a printer's web pages one that shows the last label as it printed, and how its page
/// would print in each of the ten halftones. Where changes take the password, it takes it too.
void addLabelPage(pappl_printer_t* printer);

}  // namespace kelp_app

#endif
