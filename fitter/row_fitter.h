#ifndef KELP_FITTER_ROW_FITTER_H
#define KELP_FITTER_ROW_FITTER_H

#include <cups/raster.h>

#include <cstddef>

#include "fitter/row_converter.h"
#include "fitter/target_page.h"

/// Throws FitError for a page of another resolution than the target's, and for one whose rows are
/// damaged or too long.
void checkPage(const cups_page_header2_t& page, const TargetPage& target);

/// Brings the rows of a page to the target's width and polarity: the content at the left, white
/// beside it, cut where it is wider.
class RowFitter {
  public:
    /// Throws FitError for pixels of a kind that cannot be converted.
    /// @param page a page that checkPage takes
    RowFitter(const cups_page_header2_t& page, const TargetPage& target);

    /// @param row the page's cupsBytesPerLine bytes
    /// @param samples takes the target's width bytes
    void fit(const unsigned char* row, unsigned char* samples) const;
    /// A row that the page does not have.
    void makeWhite(unsigned char* samples) const;

  private:
    RowConverter convert_;
    unsigned char white_;
    std::size_t dots_;  ///< that come from the page's row
    std::size_t width_;
};

#endif
