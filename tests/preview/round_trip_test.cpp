// Pages through the printer's encoder and back.

#include <gtest/gtest.h>

#include "printer/zpl_encoding.h"
#include "tests/preview/decoded.h"
#include "tests/preview/printed_page.h"
#include "tests/preview/random.h"

namespace {

using kelp_preview::Bitmap;
using kelp_test::decode;
using kelp_test::Decoded;
using kelp_test::printed;
using kelp_test::Random;

// Solid, blank, striped and noisy rows, with runs of many lengths.
Bitmap random_page(Random& random) {
    Bitmap page(1 + random.below(random.below(4) == 0 ? 9000 : 100), 1 + random.below(20));
    for (std::uint64_t y = 0; y < page.height; ++y) {
        const unsigned kind = random.below(4);
        const unsigned longest_run = 1 + random.below(600);
        bool black = random.below(2) == 0;
        for (std::uint64_t x = 0, run = 0; x < page.width; ++x, --run) {
            if (run == 0) {
                run = 1 + random.below(longest_run);
                black = !black;
            }
            if (kind == 0 || (kind != 1 && black)) {
                page.setDot(x, y);
            }
        }
    }
    return page;
}

// The driver sends ':' for a row of nothing but black bytes below the first row: the printer, and
// so the preview, puts the row before there.
bool sent_as_repetition(const Bitmap& page, std::uint64_t y) {
    return y > 0 && zplIsSolidRow(page.row(y), page.rowBytes());
}

std::string row_of(const Bitmap& bitmap, std::uint64_t y) {
    return {reinterpret_cast<const char*>(bitmap.row(y)), bitmap.rowBytes()};
}

TEST(RoundTrip, APageComesBackButForSolidRowsWhichRepeatTheRowBefore) {
    Random random(44);
    int repeated = 0;
    int changed = 0;
    for (int round = 0; round < 1500; ++round) {
        const Bitmap page = random_page(random);
        const Decoded decoded = decode(printed(page));
        ASSERT_EQ(decoded.labels.size(), 1U);
        ASSERT_EQ(decoded.warnings(), 0U);
        const Bitmap& result = *decoded.labels[0].dots;
        ASSERT_EQ(result.width, (page.width + 7) / 8 * 8);
        ASSERT_EQ(result.height, page.height);
        for (std::uint64_t y = 0; y < page.height; ++y) {
            const bool repeats = sent_as_repetition(page, y);
            ASSERT_EQ(row_of(result, y), repeats ? row_of(result, y - 1) : row_of(page, y))
                << "round " << round << " row " << y;
            repeated += repeats ? 1 : 0;
            changed += row_of(result, y) != row_of(page, y) ? 1 : 0;
        }
    }
    // Both cases came often.
    EXPECT_GT(repeated, 100);
    EXPECT_GT(changed, 50);
}

TEST(RoundTrip, APageWithAPartialLastByteAlwaysComesBackWhole) {
    // Its last byte is never all ones, so no row counts as solid.
    Random random(45);
    int solid_rows = 0;
    for (int round = 0; round < 500; ++round) {
        Bitmap page = random_page(random);
        if (page.width % 8 == 0) {
            continue;
        }
        const Decoded decoded = decode(printed(page));
        ASSERT_EQ(decoded.labels.at(0).dots->bytes, page.bytes) << round;
        solid_rows += blackDots(page) == page.width * page.height ? 1 : 0;
    }
    EXPECT_GT(solid_rows, 0);
}

TEST(RoundTrip, SolidRowsBelowASolidFirstRowComeBack) {
    Bitmap page(16, 4);
    page.bytes = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x0F, 0x00};
    EXPECT_EQ(decode(printed(page)).labels.at(0).dots->bytes, page.bytes);
}

TEST(RoundTrip, ASolidRowBelowAnotherOnePrintsAsThatOne) {
    Bitmap page(16, 3);
    page.bytes = {0x0F, 0x00, 0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(decode(printed(page)).labels.at(0).dots->bytes,
              (std::vector<unsigned char>{0x0F, 0x00, 0x0F, 0x00, 0x0F, 0x00}));
}

}  // namespace
