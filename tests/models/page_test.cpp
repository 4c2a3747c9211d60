// The pages against those that the page fitter takes from the PPD file.

#include "models/page.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "fitter/fit_error.h"
#include "tests/drivers/ppds.h"

namespace kelp_test {
namespace {

using kelp_models::customPageOf;
using kelp_models::Model;

class Pages : public testing::TestWithParam<std::string> {
  protected:
    void SetUp() override { ASSERT_NE(model_, nullptr); }

    TargetPage read(const std::string& size) const {
        return readTargetPage(ppd_.c_str(), ("PageSize=" + size).c_str());
    }
    // A size of the job's own is the same page, or refused for the same reason.
    void compare_custom(float width, float length) const;

    const std::string ppd_ = KELP_PPD_DIR "/kelp-" + GetParam() + ".ppd";
    const Model* model_ = kelp_models::findModel("kelp-" + GetParam());
};

INSTANTIATE_TEST_SUITE_P(All, Pages, testing::ValuesIn(every_model()), test_name);

void expect_same(const TargetPage& page, const TargetPage& expected) {
    EXPECT_EQ(page.width, expected.width);
    EXPECT_EQ(page.height, expected.height);
    EXPECT_EQ(page.polarity, expected.polarity);
    EXPECT_EQ(page.header.cupsWidth, expected.header.cupsWidth);
    EXPECT_EQ(page.header.cupsHeight, expected.header.cupsHeight);
    EXPECT_STREQ(page.header.cupsPageSizeName, expected.header.cupsPageSizeName);
    // libcups leaves a part of "Letter" behind the end of a shorter name.
    const auto unnamed = [](cups_page_header2_t header) {
        std::memset(header.cupsPageSizeName, 0, sizeof header.cupsPageSizeName);
        return header;
    };
    const cups_page_header2_t one = unnamed(page.header);
    const cups_page_header2_t other = unnamed(expected.header);
    EXPECT_EQ(std::memcmp(&one, &other, sizeof one), 0);
}

void Pages::compare_custom(float width, float length) const {
    char size[128];
    std::snprintf(size, sizeof size, "Custom.%.9gx%.9g", static_cast<double>(width),
                  static_cast<double>(length));
    SCOPED_TRACE(size);
    TargetPage expected{};
    std::string reason;
    try {
        expected = read(size);
    } catch (const FitError& error) {
        reason = error.what();
    }
    try {
        const TargetPage page = customPageOf(*model_, width, length);
        EXPECT_EQ(reason, "");
        expect_same(page, expected);
    } catch (const FitError& error) {
        EXPECT_NE(reason, "");
        // libcups makes no page of a size of no dots, which here is one beyond the limits.
        if (reason.rfind("The page size ", 0) == 0) {
            EXPECT_EQ(error.what(), reason);
        }
    }
}

TEST_P(Pages, AreTheFittersForEverySize) {
    for (const kelp_models::PageSize& size : model_->sizes) {
        SCOPED_TRACE(size.name);
        expect_same(pageOf(*model_, size), read(size.name));
    }
}

TEST_P(Pages, AreTheFittersForCustomSizes) {
    const auto widest = static_cast<float>(model_->maxWidth);
    const std::vector<float> widths = {28.0F,         28.3F,          50.0F,  99.9F,
                                       100.0F,        100.4F,         100.5F, 162.0F,
                                       widest - 1.0F, widest - 0.25F, widest};
    const std::vector<float> lengths = {28.0F, 36.0F, 85.04F, 425.197F, 1000.5F, 2833.9F, 2834.0F};
    for (const float width : widths) {
        for (const float length : lengths) {
            compare_custom(width, length);
        }
    }
}

// A third of a dot apart, and where a dot more begins.
TEST_P(Pages, AreTheFittersToTheDot) {
    for (int i = 0; i < 300; ++i) {
        const float length = 40.0F + static_cast<float>(i) * (72.0F / 203.0F / 3.0F);
        const float border = (static_cast<float>(200 + 7 * i) + 0.5F) * 72.0F / 203.0F;
        compare_custom(40.0F + static_cast<float>(i % 100), length);
        compare_custom(length, border);
        compare_custom(40.0F, std::nextafter(border, 0.0F));
        compare_custom(40.0F, std::nextafter(border, 5000.0F));
    }
}

TEST_P(Pages, HaveTheFittersLimits) {
    const auto widest = static_cast<float>(model_->maxWidth);
    const std::vector<float> widths = {-100.0F,
                                       0.0F,
                                       0.3F,
                                       27.4F,
                                       27.5F,
                                       28.0F,
                                       widest + 0.5F,
                                       widest + 0.6F,
                                       widest + 10.0F,
                                       1.0e9F,
                                       1.0e30F,
                                       -0.0F,
                                       std::nextafter(27.5F, 0.0F),
                                       std::nextafter(widest + 0.5F, 5000.0F)};
    const std::vector<float> lengths = {-100.0F, 0.0F,    27.4F,   27.5F,  100.0F,
                                        2834.5F, 2834.6F, 3000.0F, 1.0e9F, 1.0e30F};
    for (const float width : widths) {
        for (const float length : lengths) {
            compare_custom(width, length);
        }
    }
}

TEST_P(Pages, OfSizesThatAreNoNumbersAreRefused) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    for (const float number : {none, endless, -endless}) {
        EXPECT_THROW(customPageOf(*model_, number, 100.0F), FitError);
        EXPECT_THROW(customPageOf(*model_, 100.0F, number), FitError);
    }
}

// 288 x 432 points are 812 x 1218 dots, and 812 is 4 more than a multiple of 8.
TEST(Pages, AreCountedInDots) {
    const Model* model = kelp_models::findModel("kelp-label-4inch");
    ASSERT_NE(model, nullptr);
    const kelp_models::PageSize* size = model->findSize("4x6in");
    ASSERT_NE(size, nullptr);
    const TargetPage page = pageOf(*model, *size);
    EXPECT_EQ(page.width, 812U);
    EXPECT_EQ(page.height, 1218U);
    EXPECT_EQ(page.header.HWResolution[0], 203U);
    EXPECT_EQ(page.header.HWResolution[1], 203U);
    // A size in millimetres may lie half a point beyond.
    EXPECT_EQ(customPageOf(*model, 27.6F, 2834.4F).width, 76U);  // of 77.8, 78
    EXPECT_THROW(customPageOf(*model, 27.4F, 100.0F), FitError);
    EXPECT_THROW(customPageOf(*model, 100.0F, 2834.6F), FitError);
    try {
        customPageOf(*model, 1000.0F, 100.0F);  // 352.8 x 35.3 mm
        FAIL();
    } catch (const FitError& error) {
        // 28 points are 9.9 mm; 295 are 104.1 and 2834 are 999.8.
        EXPECT_STREQ(
            error.what(),
            "The page size of 352.8 x 35.3 mm is none that the printer takes: 9.9 x 9.9 mm "
            "to 104.1 x 999.8 mm.");
    }
}

}  // namespace
}  // namespace kelp_test
