#include "tools/kelp-preview/sheet/document_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <sstream>

#include "pictures/picture_formats.h"
#include "preview/description.h"
#include "tools/kelp-preview/run_command.h"

namespace {

using kelp_preview::kDotsPerInch;
using Clock = std::chrono::steady_clock;

constexpr std::uint64_t kHeaderBytes = 200;
/// Of a page in its own size: more than a square metre.
constexpr std::uint64_t kLargestPage = 100'000'000;
/// A page that is nearly as large as asked is drawn in its own size: lines keep their widths.
constexpr double kNearlyOne = 0.01;

/// The first line that tells of an error; else the last.
std::string ghostscriptSaid(const CommandResult& result) {
    std::istringstream lines(result.errors);
    for (std::string line; std::getline(lines, line);) {
        if (const std::size_t begin = line.find("Error: "); begin != std::string::npos) {
            return ": " + line.substr(begin);
        }
    }
    return result.lastError.empty() ? "" : ": " + result.lastError;
}

/// A page as ghostscript draws it.
class DocumentPage {
  public:
    DocumentPage(const std::string& path, unsigned page, const std::function<void()>& whileItRuns,
                 std::chrono::milliseconds patience)
        // Absolute: no name means something else.
        : path_(std::filesystem::absolute(path).string()),
          page_(std::to_string(page)),
          whileItRuns_(whileItRuns),
          deadline_(Clock::now() + patience) {}

    /// A PGM file, or as much of it as asked for.
    std::string draw(double dotsPerInch, std::uint64_t mostBytes) const {
        char resolution[32];
        std::snprintf(resolution, sizeof resolution, "-r%.6f", dotsPerInch);
        const CommandResult result =
            runCommand({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw",
                        resolution, "-dFirstPage=" + page_, "-dLastPage=" + page_,
                        "-sstdout=%stderr", "-sOutputFile=-", "-f", path_},
                       mostBytes, [&] {
                           whileItRuns_();
                           if (Clock::now() >= deadline_) {
                               throw PictureError("ghostscript does not come to the end of it");
                           }
                       });
        if (result.output.size() < 2 || result.output[0] != 'P') {
            throw PictureError("a document without a page " + page_ + " that ghostscript can draw" +
                               ghostscriptSaid(result));
        }
        return result.output;
    }

  private:
    std::string path_;
    std::string page_;
    const std::function<void()>& whileItRuns_;
    Clock::time_point deadline_;
};

double scaleToFit(const PageSize& page, const PageSize& size) {
    const double scale = std::min(static_cast<double>(size.width) / page.width,
                                  static_cast<double>(size.height) / page.height);
    return std::abs(scale - 1) < kNearlyOne ? 1 : scale;
}

std::uint64_t fileBytes(const PageSize& page, double scale) {
    // Sides are rounded: one dot more.
    return static_cast<std::uint64_t>((page.width * scale + 1) * (page.height * scale + 1)) +
           kHeaderBytes;
}

/// What of the picture lies within the size.
GreyPicture cropped(const GreyPicture& picture, const PageSize& size) {
    GreyPicture result{
        std::min(picture.width, size.width), std::min(picture.height, size.height), {}};
    for (std::size_t y = 0; y < result.height; ++y) {
        const auto row = picture.pixels.begin() + static_cast<std::ptrdiff_t>(y * picture.width);
        result.pixels.insert(result.pixels.end(), row,
                             row + static_cast<std::ptrdiff_t>(result.width));
    }
    return result;
}

}  // namespace

GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PageSize& size,
                              const std::function<void()>& whileItRuns,
                              std::chrono::milliseconds patience) {
    const DocumentPage document(path, page, whileItRuns, patience);
    // Not ghostscript's own fitting: it turns pages.
    std::string file = document.draw(kDotsPerInch, kLargestPage);
    const PictureSize ownSize = sizeOfPgm(file);
    const double scale = scaleToFit(ownSize, size);
    if (scale != 1 || file.size() >= kLargestPage) {
        file = document.draw(kDotsPerInch * scale, fileBytes(ownSize, scale));
    }
    return cropped(pictureOfPgm(file, std::numeric_limits<std::uint64_t>::max()), size);
}
