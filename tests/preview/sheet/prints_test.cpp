// Each print on a sheet is what the filter prints.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/preview/decoded.h"
#include "tests/preview/read_png.h"
#include "tests/preview/sheet/sheet_program.h"
#include "tests/process/sandbox.h"
#include "tests/support/files.h"
#include "tests/support/grey_pages.h"
#include "tools/kelp-preview/sheet/caption.h"
#include "tools/kelp-preview/sheet/contact_sheet.h"

namespace {

using kelp_preview::Bitmap;
using kelp_test::Arguments;
using kelp_test::dot_rows;
using kelp_test::Grey;
using Rows = std::vector<std::string>;

struct Options {
    int brightness = 0;
    bool mirror = false;
    bool negative = false;

    Arguments arguments() const {
        Arguments result{"--brightness", std::to_string(brightness)};
        if (mirror) {
            result.push_back("--mirror");
        }
        if (negative) {
            result.push_back("--negative");
        }
        return result;
    }
};

// Pages are as wide as the page fitter makes them, white at the right.
unsigned page_width(unsigned width) {
    while (width % 8 != 4) {
        ++width;
    }
    return width;
}

// What the rasteriser hands the filter: ink for label printers, light for stencil printers.
kelp_test::Page raster_page(const Grey& picture, bool stencil) {
    kelp_test::Page page;
    page.width = page_width(picture.width);
    page.height = picture.height;
    page.color_space = stencil ? CUPS_CSPACE_W : CUPS_CSPACE_K;
    for (unsigned y = 0; y < picture.height; ++y) {
        std::string row = picture.pixels.substr(std::size_t{y} * picture.width, picture.width);
        row.resize(page.width, '\xFF');
        for (char& pixel : row) {
            pixel = stencil ? pixel : static_cast<char>(~pixel);
        }
        page.pixels += row;
    }
    return page;
}

// A queue of the printer: stencil drivers have NegativeImage on by default.
kelp_test::Job job_of(const Grey& picture, const Halftone& halftone, const Options& options) {
    const bool negative = halftone.isStencil != options.negative;
    const std::string brightness = std::to_string(options.brightness);
    kelp_test::Job job = kelp_test::job_of(
        {raster_page(picture, halftone.isStencil)},
        std::string("HalftoneType=") + halftone.optionName() + " Brightness=" + brightness +
            " MirrorImage=" + (options.mirror ? "True" : "False") +
            " NegativeImage=" + (negative ? "True" : "False"));
    kelp_test::Ppd ppd = kelp_test::bare_ppd();
    ppd.option("HalftoneType", {"Other", halftone.optionName()})
        .option("Brightness", {"7", brightness})
        .option("MirrorImage", {"False", "True"})
        .option("NegativeImage", {"False", "True"});
    job.ppd = ppd.text();
    return job;
}

// The label that the filter's process sends, as wide as the page: in the rest of the last byte
// nothing prints.
Bitmap printed_by_filter(const Grey& picture, const Halftone& halftone, const Options& options) {
    const kelp_test::JobResult result = kelp_test::run_job(job_of(picture, halftone, options));
    const kelp_test::Decoded decoded = kelp_test::decode(result.output);
    EXPECT_EQ(decoded.labels.size(), 1U) << result.error;
    if (decoded.labels.size() != 1) {
        return {};
    }
    const Bitmap& label = *decoded.labels[0].dots;
    EXPECT_FALSE(decoded.labels[0].setup.isTurned());
    EXPECT_EQ(label.width, page_width(picture.width) + 4);
    EXPECT_EQ(label.height, picture.height);
    Bitmap print(label.width - 4, label.height);
    for (std::uint64_t y = 0; y < label.height; ++y) {
        for (std::uint64_t x = 0; x < label.width; ++x) {
            if (label.dot(x, y)) {
                EXPECT_LT(x, print.width) << "a dot beside the page";
                print.setDot(std::min(x, print.width - 1), y);
            }
        }
    }
    return print;
}

Rows cut(const Rows& sheet, std::uint64_t left, std::uint64_t top, const Bitmap& like) {
    Rows rows;
    for (std::uint64_t y = 0; y < like.height; ++y) {
        rows.push_back(sheet.at(top + y).substr(left, like.width));
    }
    return rows;
}

class Prints : public kelp_test::SheetProgram {
  protected:
    void expect_like_filter(const Grey& picture, const Options& options) {
        SCOPED_TRACE(std::to_string(picture.width) + " x " + std::to_string(picture.height));
        const Rows sheet = sheet_rows(picture, options);
        std::vector<SheetCell> cells;
        for (const Halftone& halftone : kHalftones) {
            const Bitmap print = printed_by_filter(picture, halftone, options);
            const auto size = std::clamp(page_width(picture.width) / 30, 14U, 48U);
            cells.push_back({print, drawCaption(kelp_test::caption_of(halftone, print), size)});
        }
        const SheetLayout layout = layOutSheet(cells);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::uint64_t left = layout.printLeft + i % layout.columns * layout.cellWidth;
            const std::uint64_t top = layout.printTop + i / layout.columns * layout.cellHeight;
            EXPECT_EQ(cut(sheet, left, top, cells[i].print), dot_rows(cells[i].print))
                << kHalftones[i].optionName();
        }
        // The rest of the sheet too: frames, captions with the shares of these prints, white.
        EXPECT_EQ(sheet, dot_rows(drawSheet(cells)));
    }

  private:
    Rows sheet_rows(const Grey& picture, const Options& options) {
        kelp_test::write_file(dir / "picture.pgm", kelp_test::pgm(picture));
        Arguments arguments{"picture.pgm", "--pixels-are-dots", "-o", "out.png"};
        const Arguments more = options.arguments();
        arguments.insert(arguments.end(), more.begin(), more.end());
        const kelp_test::ProcessResult result = sheet(arguments);
        EXPECT_EQ(result.exit_status, 0) << result.error;
        EXPECT_EQ(result.error, "");
        return kelp_test::read_png(dir / "out.png").rows;
    }
};

// Of every kind in turn: tones, noise, lines and what no mirror maps onto itself.
Grey picture_of(unsigned width, unsigned height, unsigned kind) {
    kelp_test::Random random(width * 1000 + height);
    switch (kind % 5) {
        case 0:
            return {width, height, kelp_test::gradient(width, height)};
        case 1:
            return {width, height, kelp_test::noise(width, height, random)};
        case 2:
            return {width, height, kelp_test::text_bars(width, height, random)};
        case 3:
            return {width, height, kelp_test::uniform(width, height, 100)};
        default:
            return {width, height, kelp_test::asymmetric(width, height)};
    }
}

class OfOptions : public Prints, public testing::WithParamInterface<Options> {};

TEST_P(OfOptions, AreThoseOfTheFilterAtWidthsTo40) {
    const bool plain = GetParam().brightness == 0 && !GetParam().mirror && !GetParam().negative;
    for (unsigned width = 1; width <= 40; width += plain ? 1 : 3) {
        expect_like_filter(picture_of(width, 1 + width * 7 % 23, width), GetParam());
    }
}

TEST_P(OfOptions, AreThoseOfTheFilterForLargerPictures) {
    expect_like_filter(picture_of(100, 80, 0), GetParam());
    expect_like_filter(picture_of(203, 61, 1), GetParam());
    expect_like_filter(picture_of(412, 120, 2), GetParam());
    expect_like_filter(picture_of(300, 201, 4), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Prints, OfOptions,
                         // Small numbers: large ones leave little but white or black.
                         testing::Values(Options{0, false, false}, Options{10, false, false},
                                         Options{-10, true, false}, Options{0, true, false},
                                         Options{0, false, true}, Options{10, true, true},
                                         Options{100, false, false}),
                         [](const testing::TestParamInfo<Options>& of) {
                             const int brightness = of.param.brightness;
                             return std::string(brightness > 50  ? "Darkest"
                                                : brightness > 0 ? "Darker"
                                                : brightness < 0 ? "Lighter"
                                                                 : "Plain") +
                                    (of.param.mirror ? "Mirrored" : "") +
                                    (of.param.negative ? "Negative" : "");
                         });

TEST_F(Prints, OfSolidPagesAreThoseOfTheFilter) {
    for (const int level : {0, 1, 127, 128, 254, 255}) {
        const Grey page{20, 9, kelp_test::uniform(20, 9, static_cast<unsigned char>(level))};
        expect_like_filter(page, {});
        expect_like_filter(page, {0, false, true});
    }
}

}  // namespace
