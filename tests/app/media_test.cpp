#include "app/media.h"

#include <gtest/gtest.h>

#include "fitter/fit_error.h"

namespace kelp_app {
namespace {

using kelp_models::findModel;
using kelp_models::Model;

const Model& model(const char* name) {
    return *findModel(name);
}

std::string name_of(const char* model_name, const char* size) {
    return mediaOf(*model(model_name).findSize(size)).name;
}

TEST(Media, HaveTheStandardsNameWhereThereIsOne) {
    EXPECT_EQ(name_of("kelp-label-4inch", "4x6in"), "na_index-4x6_4x6in");
    EXPECT_EQ(name_of("kelp-stencil-a4", "A4"), "iso_a4_210x297mm");
    EXPECT_EQ(name_of("kelp-stencil-a4", "Letter"), "na_letter_8.5x11in");
    EXPECT_EQ(name_of("kelp-stencil-a5", "Tattoo_A5"), "iso_a5_148x210mm");
    EXPECT_EQ(name_of("kelp-stencil-a5", "Tattoo_A6"), "iso_a6_105x148mm");
}

TEST(Media, HaveANameOfTheirMeasuresElse) {
    EXPECT_EQ(name_of("kelp-label-4inch", "2.25x1.25in"), "oe_2-25x1-25-label_2.25x1.25in");
    EXPECT_EQ(name_of("kelp-label-4inch", "57x32mm"), "om_57x32-label_57x32mm");
}

TEST(Media, NamesAreTakenByLibcupsWithTheSameMeasures) {
    for (const Model& each : kelp_models::models()) {
        for (const Media& media : supportedMedia(each)) {
            const pwg_media_t* read = pwgMediaForPWG(media.name.c_str());
            ASSERT_NE(read, nullptr) << media.name;
            EXPECT_EQ(read->width, media.width) << media.name;
            EXPECT_EQ(read->length, media.length) << media.name;
        }
    }
}

TEST(Media, OfEverySizeMakeThePageOfThatSize) {
    for (const Model& each : kelp_models::models()) {
        for (const kelp_models::PageSize& size : each.sizes) {
            const Media media = mediaOf(size);
            EXPECT_EQ(sizeOfMedia(each, media.width, media.length), &size)
                << each.name << " " << size.name;
        }
    }
}

TEST(Media, AlmostASizeAreThatSize) {
    const Model& wide = model("kelp-label-4inch");
    // 288 x 432 points; a point is 35.3 hundredths of a millimetre.
    EXPECT_EQ(sizeOfMedia(wide, 10160 + 35, 15240 - 35), wide.findSize("4x6in"));
    EXPECT_EQ(sizeOfMedia(wide, 10160 + 36, 15240), nullptr);
    EXPECT_EQ(sizeOfMedia(wide, 10160, 15240 - 36), nullptr);
}

TEST(Media, OfNoSizeMakeACustomPage) {
    // 70 x 45 mm: 198.43 x 127.56 points, at 203 dots to 72 of them 559.4 x 359.6 dots
    const TargetPage page = pageOfMedia(model("kelp-label-4inch"), 7000, 4500);
    EXPECT_EQ(page.width, 556U);
    EXPECT_EQ(page.height, 360U);
}

TEST(Media, TheLargestAndTheSmallestCanBePrinted) {
    for (const Model& each : kelp_models::models()) {
        const std::vector<Media> media = supportedMedia(each);
        const Media& smallest = media[media.size() - 2];
        const Media& largest = media[media.size() - 1];
        EXPECT_TRUE(smallest.name.starts_with("custom_min_")) << smallest.name;
        EXPECT_TRUE(largest.name.starts_with("custom_max_")) << largest.name;
        EXPECT_NO_THROW(pageOfMedia(each, smallest.width, smallest.length));
        EXPECT_NO_THROW(pageOfMedia(each, largest.width, largest.length));
        EXPECT_THROW(pageOfMedia(each, largest.width + 40, largest.length), FitError);
        EXPECT_THROW(pageOfMedia(each, smallest.width, smallest.length - 40), FitError);
    }
}

}  // namespace
}  // namespace kelp_app
