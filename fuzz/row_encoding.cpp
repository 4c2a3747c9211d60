// Dots of a page, packed and encoded as the printer prints them: a whole label.
//
// Checked: every byte is the reference's; the preview's decoder reads it without a warning and
// finds the packed dots again, but where a black row repeats a row before it that is not black.

#include <fuzzer/FuzzedDataProvider.h>

#include <sstream>
#include <vector>

#include "fuzz/any_form.h"
#include "fuzz/captured_log.h"
#include "fuzz/check.h"
#include "preview/stream_decoder.h"
#include "printer/zpl_printer.h"
#include "tests/reference/encoding.h"

namespace {

using kelp_fuzz::require;
using kelp_fuzz::require_same;
using Bytes = std::vector<unsigned char>;

// Runs of dots, as pages have them.
Bytes page_of(FuzzedDataProvider& input, std::size_t size) {
    Bytes dots;
    while (dots.size() < size && input.remaining_bytes() > 0) {
        const int kind = input.ConsumeIntegralInRange(0, 3);
        const auto run = input.ConsumeIntegralInRange<std::size_t>(1, kind == 0 ? 12000 : 16);
        const auto value = input.ConsumeIntegral<unsigned char>();
        dots.insert(dots.end(), run, kind == 1 ? 0 : value);
    }
    dots.resize(size);
    return dots;
}

std::string printed(Bytes dots, unsigned long width, unsigned long height, unsigned long skip,
                    int copies) {
    kelp_fuzz::CapturedLog log;
    kelp_test::MemoryStream output;
    cups_page_header2_t header{};
    header.NumCopies = static_cast<unsigned>(copies);
    ZplPrinter printer;
    printer.getOutputStreams() = {output.file()};
    printer.setPageHeader(&header).setSkipRightPixels(skip);
    sPrinter = &printer;
    LastSet = 0;
    printer.doPrintImage(dots.data(), width, height, width);
    sPrinter = nullptr;
    return output.take();
}

// What the rows of a label show on paper.
Bytes shown(Bytes packed, std::size_t row_bytes) {
    for (std::size_t at = row_bytes; at < packed.size(); at += row_bytes) {
        const auto row = packed.begin() + static_cast<std::ptrdiff_t>(at);
        const auto end = row + static_cast<std::ptrdiff_t>(row_bytes);
        if (std::all_of(row, end, [](unsigned char byte) { return byte == 0xFF; })) {
            std::copy(row - static_cast<std::ptrdiff_t>(row_bytes), row, row);
        }
    }
    return packed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const simd::ForcedForm forced(kelp_fuzz::any_form(input));
    // Rows of more than 400 digits, sometimes.
    const int width = input.ConsumeIntegralInRange(1, input.ConsumeBool() ? 7000 : 80);
    const int height = input.ConsumeIntegralInRange(1, width > 80 ? 6 : 40);
    const auto skip = input.ConsumeIntegralInRange<unsigned long>(0, 90);
    const int copies = input.ConsumeIntegralInRange(0, 1000);
    const Bytes dots =
        page_of(input, static_cast<std::size_t>(width) * static_cast<std::size_t>(height));

    const std::string label = printed(dots, static_cast<unsigned long>(width),
                                      static_cast<unsigned long>(height), skip, copies);
    int last_set = 0;
    require_same(label, reference::encodeLabel(width, height, skip, copies, dots, last_set),
                 "the label");
    require(LastSet == last_set, "the first row of the next page");

    std::stringbuf stream(label);
    kelp_preview::StreamDecoder decoder(stream, {});
    const auto decoded = decoder.next();
    require(decoded.has_value() && !decoder.next(), "not one label");
    require(decoded->findings.warnings.empty() && decoder.rest().warnings.empty(), "a warning");
    require(decoded->findings.unknownCommands.empty(), "an unknown command");
    require(decoded->copies == static_cast<std::uint64_t>(copies), "other copies");
    const auto row_bytes = static_cast<std::size_t>((reference::keptPixels(width, skip) + 7) / 8);
    require(decoded->dots->height == static_cast<std::uint64_t>(height) &&
                decoded->dots->rowBytes() == row_bytes,
            "another size");
    require(
        decoded->dots->bytes == shown(reference::grayToMono(width, height, skip, dots), row_bytes),
        "other dots");
    return 0;
}
