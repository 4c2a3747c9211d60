#include "app/page_job.h"

#include <algorithm>
#include <cstddef>

#include "app/label_encoder.h"
#include "fitter/fit_error.h"
#include "fitter/page_fitter.h"

namespace kelp_app {

PageJob::PageJob(const Settings& settings, const TargetPage& target, int copies)
    : settings_(settings), target_(target), copies_(copies) {}

void PageJob::startPage(const cups_page_header2_t& header) {
    checkPage(header, target_);
    fitter_.emplace(header, target_);
    header_ = fittedHeader(header, target_);
    // A raster can ask for copies too; the job's own number goes first.
    header_.NumCopies =
        copies_ > 1 ? static_cast<unsigned int>(copies_) : std::clamp(header.NumCopies, 1U, 999U);
    rowsToCome_ = header.cupsHeight;
    ++page_;
    pixels_.assign(std::size_t{target_.width} * target_.height, whiteSample(target_.polarity));
}

void PageJob::writeRow(unsigned int y, const unsigned char* row) {
    rowsToCome_ -= rowsToCome_ > 0 ? 1 : 0;
    if (y < target_.height) {
        fitter_->fit(row, pixels_.data() + std::size_t{y} * target_.width);
    }
}

Label PageJob::endPage() {
    if (rowsToCome_ > 0) {
        throw FitError("The raster to print is cut short: " + std::to_string(rowsToCome_) +
                       " rows of page " + std::to_string(page_) + " are missing.");
    }
    Label label{settings_, header_, pixels_, {}};
    label.commands = encodeLabel(settings_, header_, pixels_.data(), page_);
    return label;
}

}  // namespace kelp_app
