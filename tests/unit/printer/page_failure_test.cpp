#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "tests/unit/image/allocation_failure.h"
#include "tests/unit/printer/support/moved_files.h"
#include "tests/unit/printer/support/page.h"

// A sanitizer otherwise ends the process where an allocation fails.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace kelp_test {
namespace {

// Pages that cannot be loaded or have no memory.
class PageFailure : public testing::Test {
  protected:
    PageFailure() { page_index = 0; }
    ~PageFailure() override { page_index = 0; }

    // The log, without what a sanitizer adds to it.
    std::vector<std::string> print(const Bytes& pixels, unsigned long bytesPerLine,
                                   unsigned long height, unsigned long width) {
        std::vector<std::string> log;
        const std::string text =
            stderr_of([&] { printer.printImage(pixels.data(), bytesPerLine, height, width); });
        for (const std::string& line : lines_of(text)) {
            if (line.starts_with("DEBUG:") || line.starts_with("ERROR:") ||
                line.starts_with("CRIT:") || line.starts_with("KelpPrinter")) {
                log.push_back(line);
            }
        }
        return log;
    }
    static bool contains(const std::vector<std::string>& log, const std::string& line) {
        return std::find(log.begin(), log.end(), line) != log.end();
    }

    MovedFiles files;
    RecordingPrinter printer;
};

const char* const not_printed = "ERROR:printImage: pimage is NULL, unable to print the image";
const char* const not_loaded = "CRIT:cximage.CreateFromArray with grey failed!";

TEST_F(PageFailure, AFirstPageThatCannotBeLoadedIsNotPrinted) {
    const auto log = print(Bytes(4), 4, 1, 0);
    EXPECT_TRUE(contains(log, not_loaded));
    EXPECT_TRUE(contains(log, not_printed));
    EXPECT_TRUE(printer.prints.empty());
    EXPECT_EQ(log.back(), "DEBUG:printImage: Image processing completed");
}

TEST_F(PageFailure, ItHasOnlyTheFirstSnapshot) {
    print(Bytes(4), 4, 1, 0);
    ASSERT_EQ(files.snapshots().size(), 1U);
    EXPECT_TRUE(files.snapshots()[0].starts_with("origin_"));
    EXPECT_EQ(page_index, 1UL) << "the missing one takes no number";
}

TEST_F(PageFailure, ALaterPageThatCannotBeLoadedIsNotPrintedEither) {
    print(Bytes(4), 4, 1, 4);
    const auto log = print(Bytes(4), 4, 1, 0);
    EXPECT_TRUE(contains(log, not_loaded));
    EXPECT_TRUE(contains(log, not_printed));
    EXPECT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(page_index, 3UL);
    EXPECT_EQ(files.snapshots().size(), 3U);
}

TEST_F(PageFailure, ThePageAfterAFailedOneIsPrinted) {
    print(Bytes(4), 4, 1, 0);
    const auto log = print({0, 255, 255, 0}, 4, 1, 4);
    EXPECT_FALSE(contains(log, not_printed));
    ASSERT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(printer.prints[0].bytes, (Bytes{0, 1, 1, 0}));
}

TEST_F(PageFailure, APageTooLargeForMemoryIsNotBegun) {
    EXPECT_EQ(print(Bytes(4), 1UL << 62, 1, 4),
              (std::vector<std::string>{
                  "DEBUG:printImage: Start processing image, input width: 4, height: 1, bytes per "
                  "line: 4611686018427387904",
                  "ERROR:printImage: Memory allocation failed, unable to process image, exiting "
                  "processing",
                  "DEBUG:printImage: Image processing completed"}));
    EXPECT_TRUE(printer.prints.empty());
    EXPECT_EQ(page_index, 0UL);
}

// Lets the address space grow by so many bytes while it lives.
class AddressSpaceLimit {
  public:
    explicit AddressSpaceLimit(rlim_t more) {
        getrlimit(RLIMIT_AS, &before_);
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        rlimit limit = before_;
        limit.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + more;
        setrlimit(RLIMIT_AS, &limit);
    }
    ~AddressSpaceLimit() { setrlimit(RLIMIT_AS, &before_); }
    AddressSpaceLimit(const AddressSpaceLimit&) = delete;
    AddressSpaceLimit& operator=(const AddressSpaceLimit&) = delete;

  private:
    rlimit before_{};
};

TEST_F(PageFailure, APageWithoutMemoryForItsResultIsNotProcessed) {
    // One line of 256 MiB fits the limit, the result of twice that does not.
    constexpr unsigned long line = 256UL << 20;
    std::vector<std::string> log;
    {
        const AddressSpaceLimit limit(line + (128UL << 20));
        log = print(Bytes(4), line, 1, 4);
    }
    EXPECT_EQ(log, (std::vector<std::string>{
                       "DEBUG:printImage: Start processing image, input width: 4, height: 1, "
                       "bytes per line: 268435456",
                       "DEBUG:printImage: Memory allocated successfully, size: 268435456 bytes",
                       "DEBUG:printImage: Saving original image, file path will be generated "
                       "based on time",
                       "ERROR:printImage: Memory allocation for processing result failed, unable "
                       "to continue processing",
                       "DEBUG:printImage: Freed the allocated memory, address: (nil)",
                       "DEBUG:printImage: Image processing completed"}));
    EXPECT_TRUE(printer.prints.empty());
    EXPECT_EQ(page_index, 1UL);
    EXPECT_EQ(printer.processedImage(), nullptr);
}

TEST_F(PageFailure, ThePageAfterOneWithoutMemoryIsPrinted) {
    print(Bytes(4), 1UL << 62, 1, 4);
    print({0, 255, 255, 0}, 4, 1, 4);
    ASSERT_EQ(printer.prints.size(), 1U);
    EXPECT_EQ(printer.prints[0].bytes, (Bytes{0, 1, 1, 0}));
}

TEST_F(PageFailure, APageNeedsNoMemoryForASecondImageOfItsSize) {
    constexpr unsigned long width = 1000;
    constexpr unsigned long height = 100;
    const Bytes page(width * height, 255);
    {
        // The work buffer, the result, the loaded image, the test's copy; the dots are smaller.
        const AllocationFailure failure(width * height, 4);
        print(page, width, height, width);
        EXPECT_EQ(failure.refused(), 0U);
    }
    ASSERT_EQ(printer.prints.size(), 1U);
    EXPECT_TRUE(printer.prints[0].bytes == Bytes(width * height, 1));
}

TEST_F(PageFailure, ATattooPageWithoutMemoryForItsDotsLeavesTheImageOfAPlainPageBefore) {
    // That image has the tattoo page's levels by then.
    constexpr unsigned long width = 1000;
    constexpr unsigned long height = 100;
    print(Bytes(4), 4, 1, 4);
    printer.setHalftoneType(DitherTattoo);
    const Bytes page(width * height, 99);
    {
        // More than a page's bytes have the result and the loaded image; then the dots' image.
        const AllocationFailure failure(width * height + 1, 2);
        print(page, width, height, width);
        EXPECT_EQ(failure.refused(), 1U);
    }
    ASSERT_EQ(printer.prints.size(), 2U);
    EXPECT_TRUE(printer.prints[1].bytes == page);
}

TEST_F(PageFailure, AFailedLoadAfterATattooPageKeepsThatPage) {
    // The load empties the working image; the tattoo page is in the other one and is still set.
    printer.setHalftoneType(DitherTattoo);
    print(Bytes(4, 255), 4, 1, 4);
    const auto log = print(Bytes(4), 4, 1, 0);
    EXPECT_TRUE(contains(log, not_loaded));
    EXPECT_FALSE(contains(log, not_printed));
    ASSERT_EQ(printer.prints.size(), 2U);
    EXPECT_EQ(printer.prints[1].bytes, Bytes(4, 255));
}

}  // namespace
}  // namespace kelp_test
