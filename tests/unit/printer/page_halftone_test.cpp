#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "enhance/tattoo.h"
#include "tests/unit/printer/support/page.h"

namespace kelp_test {
namespace {

// Which method each halftone of a job runs.

// A page that no two methods render alike: every grey, in an order without a pattern.
GreyPage varied_page() {
    constexpr int width = 37;
    constexpr int height = 29;
    Bytes pixels;
    unsigned state = 12345;
    for (int i = 0; i < width * height; ++i) {
        state = state * 1103515245U + 12345U;
        pixels.push_back(static_cast<unsigned char>(state >> 16));
    }
    return {width, height, pixels};
}

Rows dithered(const GreyPage& page, long method) {
    CxImage image;
    image.CreateFromArray(page.pixels.data(), static_cast<unsigned>(page.width),
                          static_cast<unsigned>(page.height), 8,
                          static_cast<unsigned>(page.bytesPerLine), false);
    image.Dither(method);
    return indices(image);
}

Rows rows_of(const TQImage& image) {
    Rows rows;
    for (int y = 0; y < image.height; ++y) {
        rows.emplace_back(image.data + y * image.width, image.data + (y + 1) * image.width);
    }
    return rows;
}

TEST(PageHalftone, ZeroToSevenRunTheDitherMethodOfTheSameNumber) {
    const GreyPage page = varied_page();
    for (int type = 0; type < 8; ++type) {
        RecordingPrinter printer;
        printer.setHalftoneType(static_cast<DitherType>(type));
        process(printer, page);
        EXPECT_EQ(indices(*printer.processedImage()), dithered(page, type)) << type;
        for (int other = 0; other < 8; ++other) {
            if (other != type) {
                EXPECT_NE(indices(*printer.processedImage()), dithered(page, other))
                    << "the page tells " << type << " from " << other;
            }
        }
    }
}

TEST(PageHalftone, EightAndNineRunTheTwoTattooChains) {
    const GreyPage page = varied_page();
    TQImage grey(page.width, page.height, TQ_IMG_GRAY, page.pixels.data());
    const Rows tattoo = rows_of(tqTattooDithering(grey));
    const Rows tattoo_x8 = rows_of(tqTattooDitheringX8(grey));
    ASSERT_NE(tattoo, tattoo_x8);

    RecordingPrinter printer;
    printer.setHalftoneType(DitherTattoo);
    process(printer, page);
    EXPECT_EQ(indices(*printer.processedImage()), tattoo);
    printer.setHalftoneType(DitherTattooX8);
    process(printer, page);
    EXPECT_EQ(indices(*printer.processedImage()), tattoo_x8);
}

// One row through a halftone.
Rows row(DitherType type, const Bytes& pixels) {
    RecordingPrinter printer;
    printer.setHalftoneType(type);
    process(printer, {static_cast<int>(pixels.size()), 1, pixels});
    return indices(*printer.processedImage());
}

TEST(PageHalftone, NoneIsTheThreshold) {
    EXPECT_EQ(row(DitherNone, {0, 128, 129, 255}), (Rows{{0, 0, 1, 1}}));
}

TEST(PageHalftone, FloydSteinbergIsTheOrderedMatrix) {
    // 128 x 16 / 255 = 8: white where the matrix is below 8
    RecordingPrinter printer;
    printer.setHalftoneType(DitherFloydSteinberg);
    process(printer, {4, 4, Bytes(16, 128)});
    EXPECT_EQ(indices(*printer.processedImage()),
              (Rows{{1, 0, 1, 0}, {0, 1, 0, 1}, {1, 0, 1, 0}, {0, 1, 0, 1}}));
}

TEST(PageHalftone, OrderedIsBurkes) {
    // 100 is black and passes on 100 * 8 / 32 = 25 and 100 * 4 / 32 = 12; 125 is black and passes
    // on 125 * 8 / 32 = 31: the third pixel gains 43.
    EXPECT_EQ(row(DitherOrdered, {100, 100, 86}), (Rows{{0, 0, 1}}));
    EXPECT_EQ(row(DitherOrdered, {100, 100, 85}), (Rows{{0, 0, 0}}));
}

TEST(PageHalftone, BurkesIsStucki) {
    // 100 * 8 / 42 = 19 and 100 * 4 / 42 = 9; 119 * 8 / 42 = 22: 31 in all
    EXPECT_EQ(row(DitherBurkes, {100, 100, 98}), (Rows{{0, 0, 1}}));
    EXPECT_EQ(row(DitherBurkes, {100, 100, 97}), (Rows{{0, 0, 0}}));
}

TEST(PageHalftone, StuckiIsJarvisJudiceNinke) {
    // 100 * 7 / 48 = 14 and 100 * 5 / 48 = 10; 114 * 7 / 48 = 16: 26 in all
    EXPECT_EQ(row(DitherStucki, {100, 100, 103}), (Rows{{0, 0, 1}}));
    EXPECT_EQ(row(DitherStucki, {100, 100, 102}), (Rows{{0, 0, 0}}));
    // 128 * 7 / 48 = 18: 146 is white, -109 * 7 / 48 = -15; 128 * 5 / 48 = 13: -2 in all
    EXPECT_EQ(row(DitherStucki, {128, 128, 131}), (Rows{{0, 1, 1}}));
    EXPECT_EQ(row(DitherStucki, {128, 128, 130}), (Rows{{0, 1, 0}}));
}

TEST(PageHalftone, JarvisJudiceNinkeIsSierra) {
    // 128 * 5 / 32 = 20: 148 is white, -107 * 5 / 32 = -16; 128 * 3 / 32 = 12: -4 in all
    EXPECT_EQ(row(DitherJarvisJudiceNinke, {128, 128, 133}), (Rows{{0, 1, 1}}));
    EXPECT_EQ(row(DitherJarvisJudiceNinke, {128, 128, 132}), (Rows{{0, 1, 0}}));
}

TEST(PageHalftone, SierraIsStevensonArce) {
    // Nothing for the next pixel, 100 * 32 / 200 = 16 for the one behind it.
    EXPECT_EQ(row(DitherSierra, {100, 128, 113}), (Rows{{0, 0, 1}}));
    EXPECT_EQ(row(DitherSierra, {100, 128, 112}), (Rows{{0, 0, 0}}));
}

TEST(PageHalftone, StevensonArceIsTheBayerMatrix) {
    // White where the matrix is below 100:
    //   0 192 48 240 | 128 64 176 112 | 32 224 16 208 | 160 96 144 80
    RecordingPrinter printer;
    printer.setHalftoneType(DitherStevensonArce);
    process(printer, {4, 4, Bytes(16, 100)});
    EXPECT_EQ(indices(*printer.processedImage()),
              (Rows{{1, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 1, 0}, {0, 1, 0, 1}}));
}

TEST(PageHalftone, BothTattoosKeepBlackPagesBlackAndWhitePagesWhite) {
    for (const DitherType type : {DitherTattoo, DitherTattooX8}) {
        for (const int grey : {0, 255}) {
            RecordingPrinter printer;
            printer.setHalftoneType(type);
            process(printer, {5, 3, Bytes(15, static_cast<unsigned char>(grey))});
            EXPECT_EQ(indices(*printer.processedImage()), Rows(3, std::vector<int>(5, grey)));
        }
    }
}

TEST(PageHalftone, TheRouteFollowsThePrinterAndTheMethodTheArgument) {
    const GreyPage page = varied_page();
    RecordingPrinter printer;
    process(printer, DitherStevensonArce, page);
    EXPECT_EQ(indices(*printer.processedImage()), dithered(page, 7));

    // Tattoo by argument alone: the default route, with a number that only Floyd-Steinberg has.
    process(printer, DitherTattoo, page);
    EXPECT_FALSE(printer.getUseTQDithering());
    EXPECT_EQ(indices(*printer.processedImage()), dithered(page, 8));

    printer.setHalftoneType(DitherTattooX8);
    process(printer, DitherNone, page);
    EXPECT_TRUE(printer.getUseTQDithering());
    TQImage grey(page.width, page.height, TQ_IMG_GRAY, page.pixels.data());
    EXPECT_EQ(indices(*printer.processedImage()), rows_of(tqTattooDitheringX8(grey)));
}

TEST(PageHalftone, AnArgumentOfEightIsFloydSteinberg) {
    // 128 * 7 / 16 = 56
    RecordingPrinter printer;
    process(printer, DitherTattoo, {2, 1, {128, 73}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 1}}));
    process(printer, DitherTattoo, {2, 1, {128, 72}});
    EXPECT_EQ(indices(*printer.processedImage()), (Rows{{0, 0}}));
}

TEST(PageHalftone, TheTattooFlagIsSetAnewOnEveryPage) {
    RecordingPrinter printer;
    const GreyPage page(4, 1, {0, 64, 128, 255});
    printer.setHalftoneType(DitherTattooX8).setUseTQDithering(false);
    EXPECT_NE(process(printer, page).log.find("TQ dithering is enabled\n"), std::string::npos);
    EXPECT_TRUE(printer.getUseTQDithering());

    printer.setHalftoneType(DitherStevensonArce).setUseTQDithering(true);
    EXPECT_NE(process(printer, page).log.find("TQ dithering is disabled\n"), std::string::npos);
    EXPECT_FALSE(printer.getUseTQDithering());

    for (int type = 0; type < 10; ++type) {
        printer.setHalftoneType(static_cast<DitherType>(type));
        process(printer, page);
        EXPECT_EQ(printer.getUseTQDithering(), type >= 8) << type;
    }
}

}  // namespace
}  // namespace kelp_test
