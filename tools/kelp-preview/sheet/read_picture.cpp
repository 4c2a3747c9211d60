#include "tools/kelp-preview/sheet/read_picture.h"

#include <sys/stat.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

#include "pictures/document_picture.h"
#include "pictures/picture_formats.h"
#include "pictures/scaled_picture.h"

namespace {

constexpr off_t kLargestFile = 1'000'000'000;

/// Regular files only: others may never end.
std::string wholeFile(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        throw std::system_error(errno, std::generic_category(), path);
    }
    if (!S_ISREG(status.st_mode)) {
        throw PictureError("not a regular file");
    }
    if (status.st_size > kLargestFile) {
        throw PictureError("a file over 1 GB");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) {
        throw std::system_error(errno, std::generic_category(), path);
    }
    return content;
}

using PictureReader = GreyPicture (*)(std::string_view file, std::uint64_t maxPixels);

/// Null for what is no picture.
PictureReader readerOf(std::string_view file) {
    if (file.starts_with("\x89PNG")) {
        return pictureOfPng;
    }
    if (file.starts_with("\xFF\xD8\xFF")) {
        return pictureOfJpeg;
    }
    return file.starts_with("P5") || file.starts_with("P2") ? pictureOfPgm : nullptr;
}

bool isDocument(std::string_view file) {
    // A PDF may have a little in front of its first line.
    return file.substr(0, 1024).find("%PDF-") != std::string_view::npos || file.starts_with("%!");
}

GreyPicture readDocument(const PictureSource& source, const std::function<void()>& whileItWaits) {
    checkPictureSize(source.fit.width, source.fit.height, source.maxPixels);
    return pictureOfDocument(source.path, source.page, {source.fit.width, source.fit.height},
                             whileItWaits);
}

GreyPicture fittedPicture(const GreyPicture& picture, const PictureSource& source) {
    const PageSize size = fitted(picture.width, picture.height, source.fit);
    checkPictureSize(size.width, size.height, source.maxPixels);
    return scaled(picture, {size.width, size.height});
}

}  // namespace

GreyPicture readPicture(const PictureSource& source, const std::function<void()>& whileItWaits) {
    try {
        const std::string file = wholeFile(source.path);
        const PictureReader reader = readerOf(file);
        if (reader == nullptr && isDocument(file)) {
            return readDocument(source, whileItWaits);
        }
        if (reader == nullptr) {
            throw PictureError("no PNG, JPEG, PGM, PDF or PostScript file");
        }
        if (source.page != 1) {
            throw PictureError("a picture has one page");
        }
        GreyPicture picture = reader(file, source.maxPixels);
        return source.pixelsAreDots ? picture : fittedPicture(picture, source);
    } catch (const PictureError& error) {
        throw PictureError(source.path + ": " + error.what());
    }
}
