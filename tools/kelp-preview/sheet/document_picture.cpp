#include "tools/kelp-preview/sheet/document_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>

#include "preview/description.h"
#include "tools/kelp-preview/run_command.h"
#include "tools/kelp-preview/sheet/picture_formats.h"

namespace {

using kelp_preview::kDotsPerInch;

constexpr double kPointsPerInch = 72;
constexpr std::uint64_t kHeaderBytes = 200;
/// A page that is nearly as large as asked is drawn in its own size: lines keep their widths.
constexpr double kNearlyOne = 0.01;

/// The page as a PGM file, or as much of it as asked for.
std::string draw(const std::string& path, unsigned page, double dotsPerInch,
                 std::uint64_t mostBytes) {
    const std::string number = std::to_string(page);
    char resolution[32];
    std::snprintf(resolution, sizeof resolution, "-r%.6f", dotsPerInch);
    const CommandResult result = runCommand(
        {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw", resolution,
         "-dFirstPage=" + number, "-dLastPage=" + number, "-sstdout=%stderr", "-sOutputFile=-",
         // Absolute: no name is taken for an option.
         "-f", std::filesystem::absolute(path).string()},
        mostBytes);
    if (result.output.size() < 2 || result.output[0] != 'P') {
        throw PictureError("a document without a page " + number + " that ghostscript can draw" +
                           (result.lastError.empty() ? "" : ": " + result.lastError));
    }
    return result.output;
}

double scaleToFit(const PageSize& points, const PageSize& size) {
    const double scale = std::min(size.width * kPointsPerInch / (points.width * kDotsPerInch),
                                  size.height * kPointsPerInch / (points.height * kDotsPerInch));
    return std::abs(scale - 1) < kNearlyOne ? 1 : scale;
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

GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PageSize& size) {
    // Not ghostscript's own fitting: it turns pages.
    const PageSize points = sizeOfPgm(draw(path, page, kPointsPerInch, kHeaderBytes));
    const double dotsPerInch = kDotsPerInch * scaleToFit(points, size);
    // Points are whole, dots may be some more.
    const double pixels = (points.width + 1.0) * (points.height + 1.0) * dotsPerInch * dotsPerInch /
                          (kPointsPerInch * kPointsPerInch);
    const auto mostBytes = static_cast<std::uint64_t>(pixels) + kHeaderBytes;
    return cropped(pictureOfPgm(draw(path, page, dotsPerInch, mostBytes),
                                std::numeric_limits<std::uint64_t>::max()),
                   size);
}
