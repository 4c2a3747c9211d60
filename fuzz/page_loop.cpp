// The page loop: any raster stream, with any settings.
//
// Checked: status, printer data, log and files are those of the reference; what is printed decodes
// to labels of the pages' sizes. A page for which there is no memory ends the job with status 1.
// Every other input sets what no job sets, border, turn, skipped dots and measured edges, which the
// reference does not have: then only the labels are looked at.

#include <algorithm>
#include <sstream>

#include "filter/page_loop.h"
#include "fuzz/captured_log.h"
#include "fuzz/check.h"
#include "fuzz/left_files.h"
#include "fuzz/page_loop_plan.h"
#include "fuzz/raster_reads.h"
#include "preview/stream_decoder.h"
#include "printer/zpl_printer.h"
#include "tests/reference/job/page_loop.h"

namespace {

using kelp_fuzz::RasterJob;
using namespace kelp_fuzz::page_loop_plan;
using kelp_fuzz::RasterReads;
using kelp_fuzz::require;
using kelp_fuzz::require_same;
using kelp_test::MemoryStream;

struct Outcome {
    int status = -1;
    std::string printed;
    std::string log;
    std::string files;
};

class Printer : public ZplPrinter {
  public:
    explicit Printer(const RasterJob& job) {
        if (job.byte(unusual) % 2 == 0) {
            return;
        }
        resolution_ = job.byte(resolution) % 40;
        setAntiWrinkle(std::uint32_t{job.byte(border)} << (job.byte(border_shift) % 4 * 8));
        setSkipRightPixels(job.byte(skipped));
        setRemoveBlankEdges(job.byte(edges));
        setContrast(static_cast<std::int8_t>(job.byte(contrast)));
        setRotate180Print((job.byte(edges) & 0x10) != 0);
    }
};

// Fields of both settings records, which have the same names.
template <typename Record>
Record settings_of(const RasterJob& job) {
    static constexpr const char* texts[] = {"",          "Normal",      "Continue", "LabelGaps",
                                            "LabelMark", "Direct",      "Transfer", "TearOff",
                                            "PeelOff",   "Cut",         "None",     "Rotation180",
                                            "4.5",       "Not%sNormal", "0",        "PartialCut"};
    Record record{};
    const auto put = [&](auto& field, unsigned offset) {
        const char* text = texts[(job.byte(words) + offset) % std::size(texts)];
        std::snprintf(field, sizeof field, "%s", text);
    };
    put(record.PaperType, 0);
    put(record.PostAction, job.byte(words) / 16);
    put(record.Origin, 7);
    put(record.PrintSpeed, 9);
    put(record.MediaMethod, 3);
    record.GapsHeight = static_cast<std::int8_t>(job.byte(gaps));
    record.MirrorImage = job.byte(flags) & 1;
    record.NegativeImage = job.byte(flags) & 2;
    using Halftone = decltype(record.halftoneType);
    record.halftoneType = static_cast<Halftone>(job.byte(halftone) % 12 - 1);
    record.Darkness = static_cast<std::int8_t>(job.byte(darkness));
    record.Brightness = static_cast<std::int8_t>(job.byte(brightness));
    return record;
}

Outcome printed_by_the_filter(const RasterJob& job, const std::string& stream) {
    kelp_fuzz::LeftFiles files(job.byte(failing_files));
    MemoryStream output;
    kelp_fuzz::CapturedLog log;
    Printer printer(job);
    printer.getOutputStreams() = {output.file()};
    sPrinter = &printer;
    page_index = 0;
    LastSet = 1;  // of a page before
    auto settings = settings_of<Settings>(job);
    const kelp_fuzz::OpenRaster raster(stream);
    Outcome outcome;
    outcome.status = printPages(raster.get(), settings, printer);
    sPrinter = nullptr;
    outcome.printed = output.take();
    outcome.log = log.take();
    outcome.files = files.all();
    return outcome;
}

Outcome printed_by_the_reference(const RasterJob& job, const std::string& stream) {
    kelp_fuzz::LeftFiles files(job.byte(failing_files));
    MemoryStream output;
    kelp_fuzz::CapturedLog log;
    reference::Printer printer;
    printer.output.streams = {output.file()};
    auto settings = settings_of<reference::Settings>(job);
    const kelp_fuzz::OpenRaster raster(stream);
    Outcome outcome;
    outcome.status = reference::printPages(raster.get(), printer, settings);
    outcome.printed = output.take();
    outcome.log = log.take();
    outcome.files = files.all();
    return outcome;
}

// Without the addresses of buffers, which nobody can foresee.
std::string without_addresses(std::string log) {
    for (const std::string before : {"pointer address: ", "processing result, address: "}) {
        for (std::size_t at = 0; (at = log.find(before, at)) != std::string::npos;) {
            at += before.size();
            log.erase(at, log.find_first_of(",\n", at) - at);
        }
    }
    return log;
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t times = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) {
        ++times;
    }
    return times;
}

std::vector<kelp_preview::Label> labels_in(const std::string& printed) {
    std::stringbuf stream(printed);
    kelp_preview::StreamDecoder decoder(stream, {});
    std::vector<kelp_preview::Label> labels;
    while (auto label = decoder.next()) {
        labels.push_back(*label);
    }
    return labels;
}

void check_labels(const RasterJob& job, const RasterReads& reads, const Outcome& outcome) {
    const std::vector<kelp_preview::Label> labels = labels_in(outcome.printed);
    require(labels.size() == count(outcome.printed, "~DGR:CUPS.GRF,"), "a label is lost");
    if (job.byte(unusual) % 2 != 0) {
        return;
    }
    // Pages without pixels in their rows are passed over, or bring the page before once more.
    std::vector<cups_page_header2_t> pages = reads.headers();
    if (std::any_of(pages.begin(), pages.end(),
                    [](const auto& page) { return page.cupsWidth == 0; })) {
        return;
    }
    require(labels.size() <= pages.size(), "more labels than pages");
    for (const kelp_preview::Label& label : labels) {
        const auto fits = [&](const cups_page_header2_t& page) {
            return label.dots->height == page.cupsHeight &&
                   label.dots->rowBytes() == (page.cupsWidth + 7) / 8;
        };
        // In the pages' order; libcups may have had no pixels for some.
        const auto found = std::find_if(pages.begin(), pages.end(), fits);
        require(found != pages.end(), "a label has the size of no page");
        pages.erase(pages.begin(), found + 1);
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
    return kelp_fuzz::mutate_raster_job(data, size, max_size, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RasterJob job(data, size);
    const std::string stream = job.stream();
    Outcome outcome;
    bool no_memory = false;
    {
        const RasterReads reads(job);
        outcome = printed_by_the_filter(job, stream);
        no_memory = reads.largest() >= RasterReads::no_memory;
        check_labels(job, reads, outcome);
    }
    if (no_memory) {
        require(outcome.status == EXIT_FAILURE, "a page that has no room ends well");
    } else if (job.byte(unusual) % 2 == 0) {
        const RasterReads reads(job);
        const Outcome expected = printed_by_the_reference(job, stream);
        require(outcome.status == expected.status, "another exit status");
        require_same(without_addresses(outcome.log), without_addresses(expected.log), "the log");
        require_same(outcome.printed, expected.printed, "the printer data");
        require_same(outcome.files, expected.files, "the files");
    }
    return 0;
}
