#include "app/document_file.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>

#include "fitter/fit_error.h"

namespace kelp_app {

namespace {

constexpr std::size_t kPiece = 65536;
constexpr std::size_t kMostBytes = std::size_t{256} << 20U;

[[noreturn]] void refuse() {
    throw FitError("Unable to read the document: " + std::string(std::strerror(errno)) + ".");
}

}  // namespace

DocumentFile::DocumentFile(const char* path) : file_(std::fopen(path, "re")), piece_(kPiece) {
    if (!file_) {
        refuse();
    }
}

void DocumentFile::rewind() {
    std::rewind(file_.get());
}

std::string_view DocumentFile::next() {
    const std::size_t size = std::fread(piece_.data(), 1, piece_.size(), file_.get());
    if (size == 0 && std::ferror(file_.get()) != 0) {
        refuse();
    }
    return {piece_.data(), size};
}

std::string wholeDocument(const char* path) {
    DocumentFile file(path);
    std::string bytes;
    for (std::string_view piece = file.next(); !piece.empty(); piece = file.next()) {
        if (bytes.size() + piece.size() > kMostBytes) {
            throw FitError("The document has more than 256 MB.");
        }
        bytes += piece;
    }
    return bytes;
}

}  // namespace kelp_app
