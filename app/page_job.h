#ifndef KELP_APP_PAGE_JOB_H
#define KELP_APP_PAGE_JOB_H

#include <cups/raster.h>

#include <optional>
#include <string>
#include <vector>

#include "app/last_label.h"
#include "filter/settings.h"
#include "fitter/row_fitter.h"
#include "fitter/target_page.h"

namespace kelp_app {

/// The pages of one job, row by row as they come, and the labels they make.
class PageJob {
  public:
    /// @param copies of each page, made by the printer; at least 1
    PageJob(const Settings& settings, const TargetPage& target, int copies);

    /// Begins a page. Throws FitError for one that cannot be printed, std::bad_alloc.
    /// @param header of the rows to come
    void startPage(const cups_page_header2_t& header);
    /// Takes a row of the page that was begun; those below the target are left out.
    /// @param row cupsBytesPerLine bytes of the page's header
    void writeRow(unsigned int y, const unsigned char* row);
    /// The page and its printer commands. Throws FitError for a page of which rows are missing:
    /// half a label is worse than none; std::bad_alloc.
    Label endPage();

  private:
    Settings settings_;
    TargetPage target_;
    int copies_;
    int page_ = 0;
    unsigned int rowsToCome_ = 0;
    cups_page_header2_t header_{};  ///< of the fitted page
    std::optional<RowFitter> fitter_;
    std::vector<unsigned char> pixels_;
};

}  // namespace kelp_app

#endif
