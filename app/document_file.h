#ifndef KELP_APP_DOCUMENT_FILE_H
#define KELP_APP_DOCUMENT_FILE_H

#include <string>
#include <string_view>
#include <vector>

#include "filter/output_file.h"

namespace kelp_app {

/// The file of a document, read in pieces. Throws FitError where it cannot be read.
class DocumentFile {
  public:
    explicit DocumentFile(const char* path);

    void rewind();
    /// The next piece, valid until the one after it; empty at the end.
    std::string_view next();

  private:
    OwnedFile file_;
    std::vector<char> piece_;
};

/// All of it. Throws FitError where it cannot be read or has more than 256 MB.
std::string wholeDocument(const char* path);

}  // namespace kelp_app

#endif
