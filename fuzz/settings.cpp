// The settings of a job: any option string and any printer description, parted by a zero byte.
//
// Checked: record, log and setup commands are those of the reference; texts end within their
// fields; every line of the setup block is one of the filter's own commands, whatever the texts
// are; the page fitter makes of the same options no page or one that the filter prints.

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <string_view>

#include "filter/job_setup.h"
#include "filter/settings.h"
#include "fitter/fit_error.h"
#include "fitter/target_page.h"
#include "fuzz/captured_log.h"
#include "fuzz/check.h"
#include "printer/zpl_printer.h"
#include "tests/fitter/rasters.h"
#include "tests/reference/job/settings.h"
#include "tests/reference/job/setup.h"

// libcups forgets some texts of a broken description, and an option that it makes for itself where
// media types are odd (_ppdCacheCreateWithPPD, which quick stacks do not show); the filter's
// process ends soon. Whether the filter frees its own options the leak tests say.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
    return "leak:_ppdOpen\nleak:cupsAddOption";
}

namespace {

using kelp_fuzz::require;
using kelp_fuzz::require_same;
using kelp_test::MemoryStream;

// A file without a name that can be opened by a path.
class PathedFile {
  public:
    PathedFile() : descriptor_(memfd_create("ppd", MFD_CLOEXEC)) {}

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    void hold(const std::string& content) const {
        require(ftruncate(descriptor_, 0) == 0 &&
                    pwrite(descriptor_, content.data(), content.size(), 0) ==
                        static_cast<ssize_t>(content.size()),
                "no memory file");
    }

  private:
    int descriptor_;
};

template <std::size_t Size>
void require_same_text(const char (&is)[Size], const char (&should_be)[Size], const char* name) {
    require(is[Size - 1] == '\0', "a text without an end");
    require_same(std::string(is, Size), std::string(should_be, Size), name);
}

template <typename Number>
void require_same_number(Number is, Number should_be, const char* name) {
    // As bytes: a size that is no number is the same as itself.
    if (std::memcmp(&is, &should_be, sizeof is) != 0) {
        kelp_fuzz::broken(std::string(name) + " is " + std::to_string(is) + " and should be " +
                          std::to_string(should_be));
    }
}

void compare(const Settings& is, const reference::Settings& should_be) {
    require_same_text(is.PageSize, should_be.PageSize, "PageSize");
    require_same_text(is.Resolution, should_be.Resolution, "Resolution");
    require_same_text(is.MediaMethod, should_be.MediaMethod, "MediaMethod");
    require_same_text(is.PaperType, should_be.PaperType, "PaperType");
    require_same_text(is.PostAction, should_be.PostAction, "PostAction");
    require_same_text(is.Occurrence, should_be.Occurrence, "Occurrence");
    require_same_text(is.Origin, should_be.Origin, "Origin");
    require_same_text(is.PrintSpeed, should_be.PrintSpeed, "PrintSpeed");
    require_same_text(is.OutputFile, should_be.OutputFile, "OutputFile");
    require_same_number(is.pageWidth, should_be.pageWidth, "pageWidth");
    require_same_number(is.pageHeight, should_be.pageHeight, "pageHeight");
    require_same_number(is.GapsHeight, should_be.GapsHeight, "GapsHeight");
    require_same_number(is.MirrorImage, should_be.MirrorImage, "MirrorImage");
    require_same_number(is.NegativeImage, should_be.NegativeImage, "NegativeImage");
    require_same_number<int>(is.halftoneType, should_be.halftoneType, "halftoneType");
    require_same_number(is.Darkness, should_be.Darkness, "Darkness");
    require_same_number(is.Brightness, should_be.Brightness, "Brightness");
    require_same_number(is.DirectBuffer, should_be.DirectBuffer, "DirectBuffer");
    require_same_number(is.StoredGraphics, should_be.StoredGraphics, "StoredGraphics");
    require_same_number(is.OptionDisplayUnit, should_be.OptionDisplayUnit, "OptionDisplayUnit");
    require_same_number(is.ForceRotation, should_be.ForceRotation, "ForceRotation");
}

std::string setup_of(const Settings& settings) {
    MemoryStream output;
    ZplPrinter printer;
    printer.getOutputStreams() = {output.file()};
    sPrinter = &printer;
    jobSetup(settings);
    sPrinter = nullptr;
    return output.take();
}

std::string setup_of(const reference::Settings& settings) {
    MemoryStream stream;
    reference::Output output;
    output.streams = {stream.file()};
    reference::jobSetup(output, settings);
    return stream.take();
}

void check_lines(std::string_view setup) {
    static constexpr std::string_view commands[] = {"SIZE ", "^XX", "^PW", "^LL", "^MN", "^PO",
                                                    "^PR",   "~SD", "^MT", "^MM", "^XZ"};
    require(setup.ends_with("\r\n"), "the setup block does not end");
    for (std::size_t command = 0; !setup.empty();) {
        const std::size_t end = setup.find("\r\n");
        const std::string_view line = setup.substr(0, end);
        setup.remove_prefix(end + 2);
        require(line.find_first_of("\r\n") == std::string_view::npos, "a line in a line");
        if (line.empty()) {
            continue;
        }
        while (command < std::size(commands) && !line.starts_with(commands[command])) {
            ++command;
        }
        require(command < std::size(commands), "a line that is no command of the filter");
        ++command;
    }
}

void check_fitted_page(const std::string& path, const char* options) {
    try {
        const TargetPage page = readTargetPage(path.c_str(), options);
        require(page.width % 8 == 4 && page.width <= page.header.cupsWidth, "an unsafe width");
        require(page.height > 0 && std::uint64_t{page.width} * page.height < 1ULL << 31U,
                "a page that the filter refuses");
    } catch (const FitError&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const PathedFile described;
    static const PathedFile custom = [] {
        PathedFile file;
        file.hold(kelp_test::PagePpd().text());
        return file;
    }();
    static const bool named = setenv("PPD", described.path().c_str(), 1) == 0;
    require(named, "no environment");

    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string options = input.substr(0, input.find('\0'));
    described.hold(input.substr(std::min(options.size() + 1, input.size())));

    Settings settings;
    std::memset(static_cast<void*>(&settings), 0x5A, sizeof settings);
    reference::Settings expected;
    std::memset(static_cast<void*>(&expected), 0x5A, sizeof expected);
    std::string log;
    std::string setup;
    {
        kelp_fuzz::CapturedLog captured;
        parseSettings(settings, options.c_str());
        setup = setup_of(settings);
        log = captured.take();
    }
    std::string expected_log;
    std::string expected_setup;
    {
        kelp_fuzz::CapturedLog captured;
        reference::parseSettings(expected, options.c_str());
        expected_setup = setup_of(expected);
        expected_log = captured.take();
    }
    compare(settings, expected);
    require_same(log, expected_log, "the log");
    require_same(setup, expected_setup, "the setup block");
    check_lines(setup);
    check_fitted_page(custom.path(), options.c_str());
    return 0;
}
