// What of a page's header is kept.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <set>

#include "tests/fitter/fitter_job.h"
#include "tests/support/grey_pages.h"

namespace kelp_test {
namespace {

// The bytes of the fields that the fitter sets.
std::set<std::size_t> changed_bytes() {
    std::set<std::size_t> bytes;
    const auto add = [&](std::size_t offset, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            bytes.insert(offset + i);
        }
    };
    add(offsetof(cups_page_header2_t, ImagingBoundingBox), 16);
    add(offsetof(cups_page_header2_t, PageSize), 8);
    add(offsetof(cups_page_header2_t, cupsWidth), 8);  // and cupsHeight
    // cupsBitsPerColor, cupsBitsPerPixel, cupsBytesPerLine, cupsColorOrder, cupsColorSpace,
    // cupsCompression
    add(offsetof(cups_page_header2_t, cupsBitsPerColor), 24);
    add(offsetof(cups_page_header2_t, cupsNumColors), 4);
    add(offsetof(cups_page_header2_t, cupsPageSize), 8);
    add(offsetof(cups_page_header2_t, cupsImagingBBox), 16);
    return bytes;
}

std::string bytes_of(const cups_page_header2_t& header) {
    return {reinterpret_cast<const char*>(&header), sizeof(header)};
}

TEST(Header, KeepsEveryByteThatTheNewSizeAndPixelsDoNotConcern) {
    const std::set<std::size_t> changed = changed_bytes();
    Random random(1796);
    for (const Kind& kind : kinds()) {
        RawPage page = page_of(kind, 9, 3, "");
        std::string bytes = bytes_of(page.header);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            const bool resolution = at - offsetof(cups_page_header2_t, HWResolution) < 8;
            if (!changed.contains(at) && !resolution) {
                bytes[at] = static_cast<char>(random.between(0, 255));
            }
        }
        std::memcpy(&page.header, bytes.data(), bytes.size());
        const std::vector<RawPage> pages = fitted(fitter_job({page, page}));
        ASSERT_EQ(pages.size(), 2U);
        for (const RawPage& out : pages) {
            const std::string kept = bytes_of(out.header);
            for (std::size_t at = 0; at < bytes.size(); ++at) {
                if (!changed.contains(at)) {
                    ASSERT_EQ(kept[at], bytes[at]) << kind.name << ", byte " << at;
                }
            }
        }
    }
}

TEST(Header, KeepsCopiesMediaAndSizeName) {
    RawPage page = page_of(k8, 4, 1, "abcd");
    page.header.NumCopies = 7;
    page.header.Collate = CUPS_TRUE;
    std::strcpy(page.header.MediaType, "Vinyl");
    std::strcpy(page.header.cupsPageSizeName, "Tattoo_A5");
    RawPage plain = page_of(k8, 4, 1, "abcd");
    plain.header.NumCopies = 0;
    const std::vector<RawPage> pages = fitted(fitter_job({page, plain}));
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].header.NumCopies, 7U);
    EXPECT_EQ(pages[0].header.Collate, CUPS_TRUE);
    EXPECT_STREQ(pages[0].header.MediaType, "Vinyl");
    EXPECT_STREQ(pages[0].header.cupsPageSizeName, "Tattoo_A5");
    EXPECT_EQ(pages[0].header.HWResolution[0], 72U);
    EXPECT_EQ(pages[1].header.NumCopies, 0U);
    EXPECT_STREQ(pages[1].header.cupsPageSizeName, "");
}

TEST(Header, HasThePageOfThePpd) {
    RawPage page = page_of(k8, 4, 1, "abcd");
    page.header.PageSize[0] = page.header.PageSize[1] = 9999;
    page.header.cupsPageSize[0] = 12.5F;
    page.header.ImagingBoundingBox[0] = 3;
    page.header.cupsImagingBBox[3] = 1.5F;
    page.header.cupsCompression = 3;
    // The name of the size stays the job's, its extent is the page's.
    const std::vector<RawPage> pages =
        fitted(fitter_job({page}, {.width = "36.25", .height = "8.75"}));
    const cups_page_header2_t& header = pages.at(0).header;
    // 8.75 dots are nearest to 9.
    EXPECT_EQ(header.cupsWidth, 36U);
    EXPECT_EQ(header.cupsHeight, 9U);
    EXPECT_EQ(header.PageSize[0], 36U);
    EXPECT_EQ(header.PageSize[1], 8U);  // libcups cuts these points
    EXPECT_EQ(header.cupsPageSize[0], 36.25F);
    EXPECT_EQ(header.cupsPageSize[1], 8.75F);
    EXPECT_EQ(header.ImagingBoundingBox[0], 0U);
    EXPECT_EQ(header.ImagingBoundingBox[2], 36U);
    EXPECT_EQ(header.cupsImagingBBox[2], 36.25F);
    EXPECT_EQ(header.cupsImagingBBox[3], 8.75F);
    EXPECT_EQ(header.cupsCompression, 0U);
}

}  // namespace
}  // namespace kelp_test
