#ifndef KELP_PRINTER_ZPL_PRINTER_H
#define KELP_PRINTER_ZPL_PRINTER_H

#include <cstdint>

#include "printer/kelp_printer.h"

/// The printer for ZPL: a page becomes a compressed graphic that is downloaded, recalled at the
/// label's origin and printed.
class ZplPrinter : public KelpPrinter {
  public:
    /// Writes one whole label, its copies taken from the page header (1 without a header). `bits`
    /// is packed in place: height rows, at least one, of `width` bytes, any value but 0 a dot.
    /// Throws std::bad_alloc before the first byte is written, or not at all.
    void doPrintImage(const unsigned char* bits, unsigned long bytesPerLine, unsigned long height,
                      unsigned long width) override;

    /// Writes the data of one packed row, without a terminator. Sets LastSet.
    ///
    /// A row of nothing but black is written as ':' once LastSet is set. That is the printer's
    /// "repeat the row before": it prints right where the row before was black too.
    void ZPLPrintLine(const unsigned char* row, int bytesPerRow);

    /// Writes one run: `count` times the digit `ch`.
    void ZPLCompress(unsigned char ch, unsigned int count);
};

/// Writes the print-quantity command through sPrinter, which must be set. The first argument has
/// no effect.
void setPrint(int unused, int copies);

/// 1 once a row of the page has been written out, 0 before: to be cleared before each page, so that
/// the first row of a page never refers to the page before.
extern std::int32_t LastSet;

#endif
