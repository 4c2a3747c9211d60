#include "tools/kelp-preview/sheet/document_picture.h"

#include <filesystem>
#include <limits>
#include <sstream>
#include <vector>

#include "tools/kelp-preview/run_command.h"
#include "tools/kelp-preview/sheet/picture_formats.h"

namespace {

using Clock = std::chrono::steady_clock;

/// The first line that tells of an error; else the last.
std::string reason(const CommandResult& result) {
    std::istringstream lines(result.errors);
    for (std::string line; std::getline(lines, line);) {
        if (const std::size_t begin = line.find("Error: "); begin != std::string::npos) {
            return ": " + line.substr(begin);
        }
    }
    return result.lastError.empty() ? "" : ": " + result.lastError;
}

}  // namespace

GreyPicture pictureOfDocument(const std::string& path, unsigned page, const PageSize& size,
                              const std::function<void()>& whileItRuns,
                              std::chrono::milliseconds patience) {
    // A name that begins with '-' or '@' or '%' must not mean something else.
    const std::string file = std::filesystem::absolute(path).string();
    const std::string number = std::to_string(page);
    const std::uint64_t pictureBytes = std::uint64_t{size.width} * size.height + 100;  // and header
    const Clock::time_point deadline = Clock::now() + patience;
    const CommandResult result =
        runCommand({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw", "-r203",
                    "-g" + std::to_string(size.width) + 'x' + std::to_string(size.height),
                    "-dFIXEDMEDIA", "-dFitPage", "-dFirstPage=" + number, "-dLastPage=" + number,
                    "-sstdout=%stderr", "-sOutputFile=-", "-f", file},
                   pictureBytes, [&] {
                       whileItRuns();
                       if (Clock::now() >= deadline) {
                           throw PictureError("ghostscript does not come to the end of it");
                       }
                   });
    if (result.output.size() < 2 || result.output[0] != 'P') {
        throw PictureError("a document without a page " + number + " that ghostscript can draw" +
                           reason(result));
    }
    return pictureOfPgm(result.output, std::numeric_limits<std::uint64_t>::max());
}
