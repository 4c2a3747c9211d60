#ifndef KELP_FILTER_PUBLISHED_PRINTER_H
#define KELP_FILTER_PUBLISHED_PRINTER_H

#include "printer/kelp_printer.h"

/// Makes a printer the one of the run, sPrinter, for its own life. There must be only one at a
/// time.
class PublishedPrinter {
  public:
    explicit PublishedPrinter(KelpPrinter* printer) { sPrinter = printer; }
    ~PublishedPrinter() { sPrinter = nullptr; }
    PublishedPrinter(const PublishedPrinter&) = delete;
    PublishedPrinter& operator=(const PublishedPrinter&) = delete;
};

#endif
