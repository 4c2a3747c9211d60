#include "app/test_label.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "app/drawn_document.h"
#include "app/job_callbacks.h"
#include "app/test_label_texts.h"
#include "preview/descriptor.h"

namespace kelp_app {

namespace {

/// As long as the server.
std::filesystem::path documents;

/// A new file in the folder, which nobody else has.
class NewFile {
  public:
    explicit NewFile(std::string_view content) : path_((documents / "test-label-XXXXXX").string()) {
        const kelp_preview::Descriptor file(mkostemp(path_.data(), O_CLOEXEC));
        if (!file.isOpen() || write(file.get(), content.data(), content.size()) !=
                                  static_cast<ssize_t>(content.size())) {
            const int error = errno;
            unlink(path_.c_str());
            throw std::runtime_error("Unable to write the file " + path_ + ": " +
                                     std::strerror(error) + ".");
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }

    const std::string& path() const { return path_; }
    /// From now on it stays.
    std::string release() { return std::exchange(path_, {}); }

  private:
    std::string path_;
};

std::string_view testLabelOf(pappl_printer_t* printer) {
    const char* model = papplPrinterGetDriverName(printer);
    for (const TestLabelText& label : testLabelTexts()) {
        if (label.model == std::string_view(model)) {
            return label.postscript;
        }
    }
    throw std::runtime_error("There is no test label for this printer.");
}

bool printTestLabel(pappl_job_t* job, pappl_device_t* device, void* /*unused*/) {
    return printDrawn(job, [&](const std::function<void()>& whileItRuns) {
        const NewFile label(testLabelOf(papplJobGetPrinter(job)));
        return printPages(job, device, label.path(), 1, whileItRuns);
    });
}

}  // namespace

void addTestLabelFilter(pappl_system_t* system, const std::filesystem::path& folder) {
    documents = folder;
    papplSystemAddMIMEFilter(system, kTestLabelFormat, kCommandsFormat, printTestLabel, nullptr);
}

const char* makeTestLabelDocument(pappl_printer_t* printer, char* path, size_t size) {
    try {
        NewFile document(kTestLabelDocument);
        papplCopyString(path, document.release().c_str(), size);
        return path;
    } catch (const std::exception& error) {
        papplLogPrinter(printer, PAPPL_LOGLEVEL_ERROR, "%s", error.what());
        return nullptr;
    }
}

}  // namespace kelp_app
