#include "tools/kelp-preview/sheet/document_picture.h"

#include <filesystem>
#include <limits>
#include <vector>

#include "tools/kelp-preview/run_command.h"
#include "tools/kelp-preview/sheet/picture_formats.h"

GreyPicture pictureOfDocument(const std::string& path, unsigned page, std::uint32_t width,
                              std::uint32_t height) {
    // A name that begins with '-' or '@' or '%' must not mean something else.
    const std::string file = std::filesystem::absolute(path).string();
    const std::string size = std::to_string(width) + 'x' + std::to_string(height);
    const std::string number = std::to_string(page);
    const std::uint64_t pictureBytes = std::uint64_t{width} * height + 100;  // with its header
    const CommandResult result =
        runCommand({"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pgmraw", "-r203",
                    "-g" + size, "-dFIXEDMEDIA", "-dFitPage", "-dFirstPage=" + number,
                    "-dLastPage=" + number, "-sstdout=%stderr", "-sOutputFile=-", "-f", file},
                   pictureBytes);
    if (result.output.size() < 2 || result.output[0] != 'P') {
        throw PictureError("a document without a page " + number + " that ghostscript can draw" +
                           (result.lastError.empty() ? "" : ": " + result.lastError));
    }
    return pictureOfPgm(result.output, std::numeric_limits<std::uint64_t>::max());
}
