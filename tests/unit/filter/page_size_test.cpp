#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/unit/filter/settings_job.h"

namespace kelp_test {
namespace {

class PageSize : public testing::Test {
  protected:
    SettingsJob job;
};

TEST_F(PageSize, IsTheDescriptionsInMillimetres) {
    // points * 0.3528: 101.6064 and 152.4096
    job.use(bare_ppd());
    const Settings& settings = job.read("");
    EXPECT_EQ(settings.pageWidth, 101.6064F);
    EXPECT_EQ(settings.pageHeight, 152.4096F);
}

TEST_F(PageSize, IsComputedInDoublePrecision) {
    // 842 * 0.3528 = 297.0576; in single precision the product would be a float further.
    job.use(Ppd().page_size("A4", "595", "842"));
    const Settings& settings = job.read("");
    EXPECT_EQ(settings.pageWidth, 209.916F);
    EXPECT_EQ(settings.pageHeight, 297.0576F);
    ASSERT_NE(842.0F * 0.3528F, 297.0576F);
    EXPECT_TRUE(job.logged("settings->pageHeight:297.057587"));
}

TEST_F(PageSize, IsThePaperWithItsMargins) {
    std::string description = bare_ppd().text();
    const std::string area = "*ImageableArea w288h432: \"0 0 288 432\"";
    description.replace(description.find(area), area.size(),
                        "*ImageableArea w288h432: \"9 18 280 400\"");
    job.use_text(description);
    const Settings& settings = job.read("");
    EXPECT_EQ(settings.pageWidth, 101.6064F);
    EXPECT_EQ(settings.pageHeight, 152.4096F);
    EXPECT_TRUE(job.logged(
        "Custom Size: (288.000000,432.000000,9.000000,18.000000,280.000000,400.000000)"));
}

TEST_F(PageSize, FollowsTheJobsChoice) {
    job.use(bare_ppd().page_size("w144h72", "144", "72"));
    const Settings& settings = job.read("PageSize=w144h72");
    EXPECT_STREQ(settings.PageSize, "w144h72");
    EXPECT_EQ(settings.pageWidth, 50.8032F);
    EXPECT_EQ(settings.pageHeight, 25.4016F);
    EXPECT_TRUE(job.logged("PageSizeName: w144h72"));
    EXPECT_TRUE(
        job.logged("Custom Size: (144.000000,72.000000,0.000000,0.000000,144.000000,72.000000)"));
    EXPECT_TRUE(job.logged("Set page size: width 50.803200 mm, height 25.401600 mm"));
}

TEST_F(PageSize, OfACustomSizeIsTheJobsOwn) {
    job.use(bare_ppd().custom_page_size());
    const Settings& settings = job.read("PageSize=Custom.100x200");
    EXPECT_STREQ(settings.PageSize, "Custom");
    EXPECT_EQ(settings.pageWidth, 35.28F);
    EXPECT_EQ(settings.pageHeight, 70.56F);
    EXPECT_TRUE(job.logged("PageSizeName: Custom"));
    EXPECT_TRUE(
        job.logged("Custom Size: (100.000000,200.000000,0.000000,0.000000,100.000000,200.000000)"));
}

TEST_F(PageSize, OfACustomSizeMayBeTheDescriptionsDefault) {
    std::string description = bare_ppd().custom_page_size().text();
    const std::string line = "*DefaultPageSize: w288h432";
    description.replace(description.find(line), line.size(), "*DefaultPageSize: Custom.100x200");
    job.use_text(description);
    const Settings& settings = job.read("");
    EXPECT_STREQ(settings.PageSize, "Custom");
    EXPECT_EQ(settings.pageWidth, 35.28F);
    EXPECT_EQ(settings.pageHeight, 70.56F);
}

TEST_F(PageSize, MayBeAFractionOfAPoint) {
    job.use(Ppd().page_size("small", "10.5", "0.25"));
    const Settings& settings = job.read("");
    EXPECT_EQ(settings.pageWidth, 3.7044F);
    EXPECT_EQ(settings.pageHeight, 0.0882F);
}

TEST_F(PageSize, OfADescriptionWithoutSizesIsNothing) {
    job.use(Ppd().option("Darkness", {"15"}));
    const Settings& settings = job.read("PageSize=w288h432");
    EXPECT_EQ(settings.Darkness, 15) << "the description itself is good";
    EXPECT_STREQ(settings.PageSize, "");
    EXPECT_EQ(settings.pageWidth, 0.0F);
    EXPECT_EQ(settings.pageHeight, 0.0F);
    EXPECT_TRUE(job.logged("PageSizeName: "));
    EXPECT_EQ(job.log.find("Custom Size"), std::string::npos);
    EXPECT_EQ(job.log.find("Set page size"), std::string::npos);
}

TEST_F(PageSize, OfAChoiceWithoutDimensionsIsNothing) {
    // An option of that name, but no paper of the name that is chosen.
    job.use(Ppd().option("PageSize", {"Unmeasured"}));
    const Settings& settings = job.read("");
    EXPECT_STREQ(settings.PageSize, "Unmeasured");
    EXPECT_EQ(settings.pageWidth, 0.0F);
    EXPECT_EQ(settings.pageHeight, 0.0F);
    EXPECT_TRUE(job.logged("PageSizeName: Unmeasured"));
}

TEST_F(PageSize, IsReadAnewWhateverTheRecordHeld) {
    Settings settings{};
    settings.pageWidth = 12;
    settings.pageHeight = 34;
    EXPECT_EQ(stderr_of([&] { getPageWidthPageHeight(nullptr, settings); }),
              "DEBUG:PageSizeName: \n");
    EXPECT_EQ(settings.pageWidth, 0.0F);
    EXPECT_EQ(settings.pageHeight, 0.0F);
}

}  // namespace
}  // namespace kelp_test
