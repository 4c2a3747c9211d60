#include "pictures/document_picture.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <sstream>

#include "pictures/picture_formats.h"
#include "pictures/run_command.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kDotsPerInch = 203.0;
constexpr std::uint64_t kMostWords = 4096;
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

/// Ghostscript at work on a document.
class Ghostscript {
  public:
    Ghostscript(const std::string& path, const std::function<void()>& whileItRuns,
                const DocumentLimits& limits)
        // Absolute: no name means something else.
        : path_(std::filesystem::absolute(path).string()),
          whileItRuns_(whileItRuns),
          memory_(limits.memory),
          deadline_(Clock::now() + limits.patience) {}

    /// A PGM file, or as much of it as asked for.
    std::string draw(const std::string& page, double dotsPerInch, std::uint64_t mostBytes) const {
        char resolution[32];
        std::snprintf(resolution, sizeof resolution, "-r%.6f", dotsPerInch);
        const CommandResult result = run(
            {"-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw", resolution, "-dFirstPage=" + page,
             "-dLastPage=" + page, "-sstdout=%stderr", "-sOutputFile=-",
             // Else every dot that a shape touches is painted: bars of a barcode a dot too wide.
             "-c", "0 0 .setfilladjust2", "-f", path_},
            mostBytes);
        if (result.output.size() < 2 || result.output[0] != 'P') {
            throw PictureError("a document without a page " + page + " that ghostscript can draw" +
                               ghostscriptSaid(result));
        }
        return result.output;
    }

    /// What it prints, after its complaints, of the document's pages.
    std::string countPages() const {
        // The name is no part of the program.
        return run({"-dNODISPLAY", "--permit-file-read=" + path_, "-sFileName=" + path_, "-c",
                    "FileName (r) file runpdfbegin pdfpagecount = quit"},
                   kMostWords)
            .output;
    }

  private:
    CommandResult run(const std::vector<std::string>& arguments, std::uint64_t mostBytes) const {
        std::vector<std::string> command = {"gs", "-q", "-dSAFER"};
        if (memory_ > 0) {
            command.insert(command.begin(), {"prlimit", "--as=" + std::to_string(memory_)});
        }
        command.insert(command.end(), arguments.begin(), arguments.end());
        return runCommand(command, mostBytes, [&] {
            whileItRuns_();
            if (Clock::now() >= deadline_) {
                throw PictureError("ghostscript does not come to the end of it");
            }
        });
    }

    std::string path_;
    const std::function<void()>& whileItRuns_;
    std::uint64_t memory_;
    Clock::time_point deadline_;
};

double scaleToFit(const PictureSize& page, const PictureSize& size) {
    const double scale = std::min(static_cast<double>(size.width) / page.width,
                                  static_cast<double>(size.height) / page.height);
    return std::abs(scale - 1) < kNearlyOne ? 1 : scale;
}

std::uint64_t fileBytes(const PictureSize& page, double scale) {
    // Sides are rounded: one dot more.
    return static_cast<std::uint64_t>((page.width * scale + 1) * (page.height * scale + 1)) +
           kHeaderBytes;
}

/// What of the picture lies within the size.
GreyPicture cropped(const GreyPicture& picture, const PictureSize& size) {
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

GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PictureSize& size,
                              const std::function<void()>& whileItRuns,
                              const DocumentLimits& limits) {
    const Ghostscript ghostscript(path, whileItRuns, limits);
    const std::string number = std::to_string(page);
    // Not ghostscript's own fitting: it turns pages.
    std::string file = ghostscript.draw(number, kDotsPerInch, kLargestPage);
    const PictureSize ownSize = sizeOfPgm(file);
    const double scale = scaleToFit(ownSize, size);
    if (scale != 1 || file.size() >= kLargestPage) {
        file = ghostscript.draw(number, kDotsPerInch * scale, fileBytes(ownSize, scale));
    }
    return cropped(pictureOfPgm(file, std::numeric_limits<std::uint64_t>::max()), size);
}

unsigned pagesOfPdf(const std::string& path, const std::function<void()>& whileItRuns,
                    const DocumentLimits& limits) {
    const std::string said = Ghostscript(path, whileItRuns, limits).countPages();
    // The last line.
    const std::size_t end = said.find_last_not_of('\n');
    const std::size_t begin = said.rfind('\n', end) + 1;
    unsigned pages = 0;
    std::from_chars(said.data() + begin, said.data() + said.size(), pages);
    return pages;
}
