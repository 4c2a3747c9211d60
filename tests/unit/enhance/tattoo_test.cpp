#include "enhance/tattoo.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "tests/unit/enhance/grey_image.h"

namespace {

using namespace kelp_test;

const std::vector<std::function<TQImage(TQImage&)>> kChains = {tqTattooDithering,
                                                               tqTattooDitheringX8};

/// The five stages one after another.
TQImage staged(const TQImage& page, int threshold, int knee, float low, float high) {
    TQImage tones = cvtGray(page);
    enh_piecewise_gamma(tones, knee, low, high);
    return edf_cus(enh_unsharp_mask(tones, 300.0F, 11), threshold);
}

/// Soft dark shapes on light paper.
TQImage drawing() {
    Rows rows(40, std::vector<int>(47));
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 47; ++x) {
            const bool line = x % 9 < 2 || (x + y) % 13 == 0;
            rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
                line ? 30 + x : 255 - (3 * y + x) / 2;
        }
    }
    return grey(rows);
}

TEST(TattooDithering, RunsItsFiveStages) {
    TQImage page = drawing();
    const int threshold = thresh_global_moments(page);
    // Neither the fixed knee nor a special case.
    ASSERT_GT(threshold, 64);
    ASSERT_NE(threshold, 128);
    EXPECT_EQ(rowsOf(tqTattooDithering(page)), rowsOf(staged(page, threshold, 64, 0.85F, 0.7F)));
    EXPECT_EQ(rowsOf(tqTattooDitheringX8(page)),
              rowsOf(staged(page, threshold, threshold, 0.5F, 1.5F)));
    EXPECT_NE(rowsOf(tqTattooDithering(page)), rowsOf(tqTattooDitheringX8(page)));
}

TEST(TattooDithering, TakesTheThresholdOfThePlainGreyPage) {
    TQImage page = scattered(40, 30);
    const int threshold = thresh_global_moments(page);
    TQImage toned = page;
    enh_piecewise_gamma(toned, 64, 0.85F, 0.7F);
    const int later = thresh_global_moments(toned);
    ASSERT_NE(later, threshold);
    ASSERT_NE(rowsOf(staged(page, threshold, 64, 0.85F, 0.7F)),
              rowsOf(staged(page, later, 64, 0.85F, 0.7F)));
    EXPECT_EQ(rowsOf(tqTattooDithering(page)), rowsOf(staged(page, threshold, 64, 0.85F, 0.7F)));
}

TEST(TattooDithering, TakesAThresholdOfMinusOneForBothUses) {
    // 63 and 65 in equal parts have no threshold (both moment levels are 64).
    TQImage page = grey({{63, 65, 63, 65}, {65, 63, 65, 63}, {63, 65, 63, 65}});
    ASSERT_EQ(thresh_global_moments(page), -1);
    EXPECT_EQ(rowsOf(tqTattooDithering(page)), rowsOf(staged(page, -1, 64, 0.85F, 0.7F)));
    EXPECT_EQ(rowsOf(tqTattooDitheringX8(page)), rowsOf(staged(page, -1, -1, 0.5F, 1.5F)));
}

TEST(TattooDithering, TakesAThresholdOf255ForTheKnee) {
    TQImage page = grey({{0, 255, 0, 255}, {255, 0, 255, 0}});
    ASSERT_EQ(thresh_global_moments(page), 255);
    EXPECT_EQ(rowsOf(tqTattooDitheringX8(page)), rowsOf(staged(page, 255, 255, 0.5F, 1.5F)));
    // Nothing exceeds 255 but white with error.
    EXPECT_EQ(rowsOf(tqTattooDithering(page))[0][0], 0);
}

TEST(TattooDithering, TakesAUniformPageAtAThresholdOf128) {
    for (int level = 0; level < 256; level += 5) {
        TQImage page = uniform(15, 13, level);
        EXPECT_EQ(rowsOf(tqTattooDithering(page)), rowsOf(staged(page, 128, 64, 0.85F, 0.7F)));
        EXPECT_EQ(rowsOf(tqTattooDitheringX8(page)), rowsOf(staged(page, 128, 128, 0.5F, 1.5F)));
    }
}

TEST(TattooDithering, KeepsBlankAndSolidPages) {
    // Both curves and the mask keep 0 and 255, and neither has an error.
    for (const auto& chain : kChains) {
        for (const int level : {0, 255}) {
            TQImage page = uniform(20, 14, level);
            EXPECT_EQ(rowsOf(chain(page)), rowsOf(page));
        }
    }
}

TEST(TattooDithering, ReturnsACopyOfAnImageWithoutPixels) {
    for (const auto& chain : kChains) {
        for (const auto& [width, height] : {std::pair{0, 0}, std::pair{0, 7}, std::pair{7, 0}}) {
            for (const TQ_IMG_COLOR color : {TQ_IMG_GRAY, TQ_IMG_BGR, TQ_IMG_RGBA}) {
                TQImage page(width, height, color);
                const TQImage result = chain(page);
                EXPECT_EQ(result.width, width);
                EXPECT_EQ(result.height, height);
                EXPECT_EQ(result.color, color);
                EXPECT_EQ(result.channels, page.channels);
            }
        }
    }
}

TEST(TattooDithering, GivesOnlyBlackAndWhiteOfTheSameSize) {
    for (const auto& chain : kChains) {
        for (const auto& [width, height] : {std::pair{1, 1}, std::pair{1, 30}, std::pair{30, 1},
                                            std::pair{2, 2}, std::pair{37, 23}}) {
            TQImage page = scattered(width, height);
            const TQImage result = chain(page);
            EXPECT_EQ(result.width, width);
            EXPECT_EQ(result.height, height);
            EXPECT_EQ(result.color, TQ_IMG_GRAY);
            EXPECT_EQ(result.channels, 1);
            for (const int level : bytesOf(result)) {
                EXPECT_TRUE(level == 0 || level == 255) << level;
            }
        }
    }
}

TEST(TattooDithering, LeavesItsInputAndRemembersNothing) {
    for (const auto& chain : kChains) {
        TQImage page = drawing();
        const Rows first = rowsOf(chain(page));
        EXPECT_EQ(rowsOf(page), rowsOf(drawing()));
        TQImage other = scattered(31, 17);
        chain(other);
        EXPECT_EQ(rowsOf(chain(page)), first);
    }
}

TEST(TattooDithering, ConvertsEveryColourLayoutToGreyFirst) {
    const TQImage plain = drawing();
    for (const auto& chain : kChains) {
        TQImage grey = plain;
        const Rows expected = rowsOf(chain(grey));
        for (const TQ_IMG_COLOR color : {TQ_IMG_BGR, TQ_IMG_RGB, TQ_IMG_BGRA, TQ_IMG_RGBA}) {
            TQImage page(plain.width, plain.height, color);
            for (int i = 0; i < plain.width * plain.height; ++i) {
                for (int c = 0; c < page.channels; ++c) {
                    page.data[i * page.channels + c] = plain.data[i];
                }
            }
            EXPECT_EQ(rowsOf(chain(page)), expected) << color;
        }
    }
}

TEST(TattooDithering, KeepsBlackLinesOnWhitePaper) {
    // Two levels at the ends come through both curves and the mask, so the drawing stands as it
    // is, but for what the correction beside black dots adds.
    Rows rows(20, std::vector<int>(20, 255));
    for (auto& row : rows) {
        row[10] = 0;
    }
    for (const auto& chain : kChains) {
        TQImage page = grey(rows);
        const Rows result = rowsOf(chain(page));
        EXPECT_EQ(result[0], rows[0]);
        for (std::size_t y = 0; y < 20; ++y) {
            EXPECT_EQ(result[y][3], 255);
        }
    }
}

}  // namespace
