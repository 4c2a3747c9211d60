// Calls without a page to fit to: arguments, PPD, its page size and colors.

#include <gtest/gtest.h>

#include "tests/fitter/fitter_job.h"
#include "tests/process/expected.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

class BadTarget : public testing::Test {
  protected:
    static Job job(const PagePpd& ppd = {}, const std::string& options = {}) {
        return fitter_job({page_of(k8, 4, 1, "abcd")}, ppd, options);
    }
    static void expect_nothing_but(const JobResult& result, const std::vector<std::string>& parts) {
        expect_error(result, parts);
        EXPECT_TRUE(result.output.empty());
    }
    Command command() const { return sandbox_.command(job(), fitter_program()); }

    Sandbox sandbox_;
};

TEST_F(BadTarget, AnotherNumberOfArgumentsIsAnError) {
    for (const std::size_t count : {0U, 1U, 4U, 7U, 9U}) {
        Command wrong = command();
        wrong.arguments = std::vector<std::string>(count, "1");
        expect_nothing_but(sandbox_.run(wrong),
                           {"Usage: rastertokelpraster job_id user title copies options [file]"});
    }
}

TEST_F(BadTarget, NoPpdIsAnError) {
    Command without = command();
    without.environment.erase("PPD");
    expect_nothing_but(sandbox_.run(without), {"PPD"});
    without.environment["PPD"] = "";
    expect_nothing_but(sandbox_.run(without), {"PPD"});
}

TEST_F(BadTarget, APpdThatCannotBeReadIsAnError) {
    Command bad = command();
    for (const char* path : {"/nonexistent.ppd", "/"}) {
        bad.environment["PPD"] = path;
        expect_nothing_but(sandbox_.run(bad), {"printer description", path});
    }
    for (const std::string& text :
         {std::string(), std::string("nonsense\n"), std::string("*PPD-Adobe: \"4.3\"\n*OpenUI"),
          std::string(100'000, '\0')}) {
        bad = command();
        write_file(bad.environment["PPD"], text);
        expect_nothing_but(sandbox_.run(bad), {"printer description"});
    }
}

TEST_F(BadTarget, AFileThatCannotBeReadIsAnError) {
    Command missing = command();
    missing.arguments.emplace_back("/nonexistent.ras");
    expect_nothing_but(sandbox_.run(missing), {"/nonexistent.ras", "No such file"});
    missing.arguments.back() = "";
    expect_nothing_but(sandbox_.run(missing), {"No such file"});
    missing.arguments.back() = "/";
    expect_nothing_but(sandbox_.run(missing), {"read", "directory"});
}

TEST_F(BadTarget, APpdOfOtherColorsIsAnError) {
    PagePpd ppd;
    ppd.color_space = CUPS_CSPACE_RGB;
    expect_nothing_but(run_fitter(job(ppd)), {"printer description", "space 1"});
    ppd.color_space = CUPS_CSPACE_SW;
    expect_nothing_but(run_fitter(job(ppd)), {"printer description", "space 18"});
    ppd.color_space = 4000000;
    expect_nothing_but(run_fitter(job(ppd)), {"printer description"});
    ppd.color_space = CUPS_CSPACE_K;
    for (const unsigned bits : {1U, 2U, 16U}) {
        ppd.bits_per_color = bits;
        expect_nothing_but(run_fitter(job(ppd)),
                           {"printer description", std::to_string(bits) + " bits per color"});
    }
}

TEST_F(BadTarget, APageTooSmallIsAnError) {
    expect_nothing_but(run_fitter(job({.width = "3", .height = "8"})), {"3 x 8", "too small"});
    expect_nothing_but(run_fitter(job({.width = "36", .height = "0.4"})), {});
    expect_nothing_but(run_fitter(job({.width = "0", .height = "0"})), {});
    EXPECT_EQ(fitted(job({.width = "4", .height = "1"})).at(0).pixels, "abcd");
}

TEST_F(BadTarget, APageTooLargeForTheFilterIsAnError) {
    // 46340 is 4 more than a multiple of 8, and 46340² just below 2^31. A row more is beyond.
    expect_nothing_but(run_fitter(job({.width = "46340", .height = "46342"})),
                       {"46340 x 46342", "too large"});
    expect_nothing_but(run_fitter(job({}, "PageSize=Custom.100000x100000cm")), {});
}

TEST_F(BadTarget, ACustomSizeWithoutNumbersIsAnError) {
    for (const char* size : {"Custom.", "Custom.0x0", "Custom.NaNxNaNmm", "Custom.-4x-4in"}) {
        expect_nothing_but(run_fitter(job({}, std::string("PageSize=") + size)), {"page"});
    }
}

TEST_F(BadTarget, OptionsThatMeanNothingAreNoMatter) {
    for (const char* options : {"PageSize=", "PageSize=Nonsense", "=", "Resolution=12345dpi",
                                "ColorModel=CMYK", "'", "a=b c={d e", "copies=-3"}) {
        EXPECT_TRUE(run_fitter(job({}, options)).output == run_fitter(job()).output) << options;
    }
}

#if !KELP_SANITIZED  // shadow memory rules out a limit on memory
TEST_F(BadTarget, WithoutMemoryForARowTheJobEndsWithAnError) {
    const Job longest = fitter_job({page_of(k8, 4, 1, "abcd", 16777216 - 4)});
    Command command = sandbox_.command(longest, fitter_program());
    command.limits = {{RLIMIT_DATA, rlim_t{12} << 20U}};
    const JobResult result = sandbox_.run(command);
    expect_error(result, {"Out of memory"});
    EXPECT_EQ(pages_in(result.output).size(), 0U);
}
#endif

}  // namespace
}  // namespace kelp_test
