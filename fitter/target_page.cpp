#include "fitter/target_page.h"

#include <cups/cups.h>
#include <cups/ppd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include "fitter/fit_error.h"
#include "fitter/header_number.h"
#include "fitter/safe_width.h"

namespace {

struct ClosePpd {
    void operator()(ppd_file_t* ppd) const { ppdClose(ppd); }
};

class JobOptions {
  public:
    explicit JobOptions(const char* text) : count_(cupsParseOptions(text, 0, &options_)) {}
    ~JobOptions() { cupsFreeOptions(count_, options_); }
    JobOptions(const JobOptions&) = delete;
    JobOptions& operator=(const JobOptions&) = delete;

    int count() const { return count_; }
    cups_option_t* data() const { return options_; }

  private:
    cups_option_t* options_ = nullptr;
    int count_;
};

std::unique_ptr<ppd_file_t, ClosePpd> openPpd(const char* path) {
    if (path == nullptr || *path == '\0') {
        throw FitError("No printer description was given in the environment variable PPD.");
    }
    std::unique_ptr<ppd_file_t, ClosePpd> ppd(ppdOpenFile(path));
    if (!ppd) {
        int line = 0;
        const ppd_status_t status = ppdLastError(&line);
        throw FitError("Unable to read the printer description \"" + std::string(path) +
                       "\": " + ppdErrorString(status) + " on line " + std::to_string(line) + ".");
    }
    return ppd;
}

// "101.6 x 152.4 mm", from points.
std::string millimetres(const float size[2]) {
    constexpr double kPoint = 25.4 / 72;
    char text[128];
    std::snprintf(text, sizeof text, "%.1f x %.1f mm", static_cast<double>(size[0]) * kPoint,
                  static_cast<double>(size[1]) * kPoint);
    return text;
}

Polarity polarityOf(const cups_page_header2_t& header) {
    const std::uint32_t space = headerNumber(header.cupsColorSpace);
    if ((space != CUPS_CSPACE_K && space != CUPS_CSPACE_W) || header.cupsBitsPerColor != 8 ||
        header.cupsBitsPerPixel != 8) {
        throw FitError("The printer description asks for raster of color space " +
                       std::to_string(space) + " with " + std::to_string(header.cupsBitsPerColor) +
                       " bits per color; only 8-bit black (3) or white (0) can be printed.");
    }
    return space == CUPS_CSPACE_K ? Polarity::kBlackSpace : Polarity::kWhiteSpace;
}

bool isCustomSize(ppd_file_t* ppd) {
    const ppd_choice_t* choice = ppdFindMarkedChoice(ppd, "PageSize");
    return choice != nullptr && std::strcmp(choice->choice, "Custom") == 0;
}

}  // namespace

void checkCustomSize(const float (&size)[2], const float (&smallest)[2],
                     const float (&largest)[2]) {
    // The limits are whole points, the size may be millimetres.
    constexpr float kRounding = 0.5F;
    for (int i = 0; i < 2; ++i) {
        if (!(size[i] >= smallest[i] - kRounding) || !(size[i] <= largest[i] + kRounding)) {
            throw FitError("The page size of " + millimetres(size) +
                           " is none that the printer takes: " + millimetres(smallest) + " to " +
                           millimetres(largest) + ".");
        }
    }
}

TargetPage targetPageOf(const cups_page_header2_t& header) {
    const TargetPage page{safeWidth(header.cupsWidth), header.cupsHeight, polarityOf(header),
                          header};
    const std::string size =
        std::to_string(header.cupsWidth) + " x " + std::to_string(header.cupsHeight) + " dots";
    // libcups turns a custom size below zero round.
    const bool isSize = header.cupsPageSize[0] > 0.0F && header.cupsPageSize[1] > 0.0F;
    if (page.width == 0 || page.height == 0 || !isSize) {
        throw FitError("The page size of " + size + " is too small to print on.");
    }
    // rastertokelp takes no larger page.
    if (std::uint64_t{page.width} * page.height > std::numeric_limits<std::int32_t>::max()) {
        throw FitError("The page size of " + size + " is too large to print on.");
    }
    return page;
}

TargetPage readTargetPage(const char* ppdPath, const char* jobOptions) {
    const std::unique_ptr<ppd_file_t, ClosePpd> ppd = openPpd(ppdPath);
    const JobOptions options(jobOptions);
    ppdMarkDefaults(ppd.get());
    cupsMarkOptions(ppd.get(), options.count(), options.data());
    cups_page_header2_t header{};
    if (cupsRasterInterpretPPD(&header, ppd.get(), options.count(), options.data(), nullptr) != 0) {
        // Ends in a newline, or is missing.
        const char* reason = cupsRasterErrorString();
        const std::string text = reason != nullptr ? reason : "no reason was given.";
        throw FitError("The printer description and the job's options make no page: " +
                       text.substr(0, text.find('\n')));
    }
    // libcups makes any custom size.
    if (isCustomSize(ppd.get())) {
        checkCustomSize(header.cupsPageSize, ppd->custom_min, ppd->custom_max);
    }
    return targetPageOf(header);
}
