#include <cups/raster.h>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "image/cx_image.h"
#include "printer/bmp.h"
#include "printer/zpl_printer.h"
#include "tests/cross/stages.h"
#include "tests/reference/dither.h"
#include "tests/reference/encoding.h"
#include "tests/reference/gamma.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/gray.h"
#include "tests/reference/moments.h"
#include "tests/reference/snapshot.h"
#include "tests/reference/strided.h"
#include "tests/reference/tattoo.h"
#include "tests/unit/printer/support/memory_stream.h"

namespace kelp_test {
namespace {

using reference::GrayImage;

std::string text_of(const std::vector<unsigned char>& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string text_of(const TQImage& image) {
    return {image.data, image.data + image.byteCount()};
}

TQImage tq_of(const GrayImage& image) {
    return TQImage(image.width, image.height, TQ_IMG_GRAY, image.px.data());
}

void load(CxImage& target, const GrayImage& image) {
    const auto width = static_cast<std::uint32_t>(image.width);
    target.CreateFromArray(image.px.data(), width, static_cast<std::uint32_t>(image.height), 8,
                           width, false);
}

std::string rows_of(const CxImage& image) {
    const std::uint8_t* bits = image.GetBits();
    return {bits, bits + std::size_t{image.GetEffWidth()} * image.GetHeight()};
}

reference::StridedImage strided(const GrayImage& image) {
    return *reference::loadStrided(image.px.data(), image.width, image.height, image.width);
}

void add_halftones(std::vector<Stage>& stages, const GrayImage& image) {
    for (int method = 0; method <= 8; ++method) {
        CxImage page;
        load(page, image);
        page.Dither(method);
        page.IncreaseBpp(8);
        stages.push_back({"halftone-" + std::to_string(method), rows_of(page),
                          text_of(reference::ditherToIndices(strided(image), method).px)});
    }
}

void add_tone_and_turns(std::vector<Stage>& stages, const GrayImage& image) {
    CxImage page;
    load(page, image);
    page.Light(35, -20);
    page.Rotate180();
    page.Mirror();
    page.Negative();
    const reference::StridedImage expected = reference::negative(
        reference::mirror(reference::rotate180(reference::light(strided(image), 35, -20))));
    stages.push_back({"tone-and-turns", rows_of(page), text_of(expected.px)});
}

// The image's bytes as pixels of three and four channels.
void add_grey_of_colours(std::vector<Stage>& stages, const GrayImage& image) {
    for (int color = 1; color <= 4; ++color) {
        const int channels = color <= 2 ? 3 : 4;
        const int width = image.width / channels;
        const auto row = static_cast<std::ptrdiff_t>(width) * channels;
        std::vector<unsigned char> px(image.px.begin(), image.px.begin() + row * image.height);
        const TQImage page(width, image.height, static_cast<TQ_IMG_COLOR>(color), px.data());
        stages.push_back(
            {"grey-of-colour-" + std::to_string(color), text_of(cvtGray(page)),
             text_of(reference::cvtGray({width, image.height, color, std::move(px)}).px)});
    }
}

void add_stencils(std::vector<Stage>& stages, const GrayImage& image) {
    TQImage page = tq_of(image);
    const int threshold = thresh_global_moments(page);
    stages.push_back({"threshold", std::to_string(threshold),
                      std::to_string(reference::thresholdGlobalMoments(image))});

    TQImage gamma = tq_of(image);
    enh_piecewise_gamma(gamma, threshold, 0.5F, 1.5F);
    stages.push_back({"gamma", text_of(gamma),
                      text_of(reference::piecewiseGamma(image, threshold, 0.5F, 1.5F).px)});
    stages.push_back({"blur", text_of(enh_gaussian_filter_fast(page, 7, 1.7)),
                      text_of(reference::gaussianFilterFast(image, 7, 1.7).px)});
    stages.push_back({"blur-2d", text_of(enh_gaussian_filter(page, 3, 0.9, 1.3)),
                      text_of(reference::gaussianFilter(image, 3, 0.9, 1.3).px)});
    stages.push_back({"unsharp", text_of(enh_unsharp_mask(page, 300.0F, 11)),
                      text_of(reference::unsharpMask(image, 300.0F, 11).px)});
    stages.push_back({"diffusion", text_of(edf_cus(page, threshold)),
                      text_of(reference::edfCus(image, threshold).px)});
    stages.push_back({"tattoo", text_of(tqTattooDithering(page)),
                      text_of(reference::tattooDithering(image).px)});
    stages.push_back({"tattoo-x8", text_of(tqTattooDitheringX8(page)),
                      text_of(reference::tattooDitheringX8(image).px)});
}

void add_label(std::vector<Stage>& stages, const GrayImage& image) {
    // Dots by a threshold that differs from row to row; some rows are all black.
    std::vector<unsigned char> dots = image.px;
    for (std::size_t i = 0; i < dots.size(); ++i) {
        const std::size_t row = i / static_cast<std::size_t>(image.width);
        dots[i] = row % 5 == 4 || dots[i] > 40 * (row % 5) ? 255 : 0;
    }
    int last_set = 0;
    std::string expected = reference::encodeLabel(image.width, image.height, 1, 7, dots, last_set);

    MemoryStream stream;
    ZplPrinter printer;
    cups_page_header2_t header{};
    header.NumCopies = 7;
    printer.getOutputStreams() = {stream.file()};
    printer.setPageHeader(&header).setSkipRightPixels(1);
    sPrinter = &printer;
    LastSet = 0;
    printer.doPrintImage(dots.data(), static_cast<unsigned long>(image.width),
                         static_cast<unsigned long>(image.height),
                         static_cast<unsigned long>(image.width));
    sPrinter = nullptr;
    stages.push_back({"label", stream.take(), std::move(expected)});
}

void add_snapshots(std::vector<Stage>& stages, const GrayImage& image) {
    const auto width = static_cast<unsigned long>(image.width);
    const auto height = static_cast<unsigned long>(image.height);
    for (const std::uint16_t depth : {std::uint16_t{8}, std::uint16_t{1}}) {
        MemoryStream stream;
        writeBmp(stream.file(), image.px.data(), width, height, width, depth);
        stages.push_back(
            {"snapshot-" + std::to_string(depth), stream.take(),
             text_of(reference::snapshotBytes(image.px.data(), width, height, width, depth))});
    }
}

}  // namespace

std::vector<Stage> stages_of(const GrayImage& image) {
    std::vector<Stage> stages;
    add_halftones(stages, image);
    add_tone_and_turns(stages, image);
    add_grey_of_colours(stages, image);
    add_stencils(stages, image);
    add_label(stages, image);
    add_snapshots(stages, image);
    return stages;
}

}  // namespace kelp_test
