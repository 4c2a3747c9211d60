// Malformed jobs for the page fitter. The page is 4 × 2 dots, and so is the paper, at 72 dpi.

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "tests/fitter/rasters.h"
#include "tests/malformed/malformed_job.h"
#include "tests/malformed/raw_streams.h"

namespace kelp_test {
namespace {

using H = cups_page_header2_t;

struct MalformedFit {
    std::string name;
    Spoil make;
    int status;
    // Every line of standard error that is not for debugging.
    std::string message;
    // The pixels of every page that is written, as many as came whole.
    std::vector<std::string> pages;

    friend void PrintTo(const MalformedFit& row, std::ostream* out) { *out << row.name; }
};

RawPage good_page() {
    return page_of(k8, 4, 2, "abcdefgh");
}

Job good_job() {
    Job job;
    job.ppd = PagePpd{.width = "4", .height = "2"}.text();
    job.raster = raw_raster_stream({good_page()});
    return job;
}

Spoil fitter_job_with(const std::function<void(Job&)>& change) {
    return [change](const Sandbox& sandbox) {
        Job job = good_job();
        change(job);
        return sandbox.command(job, KELP_FITTER);
    };
}

Spoil fit(const std::string& stream) {
    return fitter_job_with([stream](Job& job) { job.raster = stream; });
}

Spoil fit_options(const std::string& options) {
    return fitter_job_with([options](Job& job) { job.options = options; });
}

Spoil fit_ppd(const std::string& ppd) {
    return fitter_job_with([ppd](Job& job) { job.ppd = ppd; });
}

Spoil fit_ppd_path(const std::string& path) {
    return [path](const Sandbox& sandbox) {
        Command command = sandbox.command(good_job(), KELP_FITTER);
        command.environment["PPD"] = path;
        return command;
    };
}

Spoil fit_arguments(const std::vector<std::string>& all) {
    return [all](const Sandbox& sandbox) {
        Command command = sandbox.command(good_job(), KELP_FITTER);
        command.arguments = all;
        return command;
    };
}

template <typename Field>
Spoil fit_header(Field H::*field, unsigned value) {
    RawPage page = good_page();
    std::memcpy(&(page.header.*field), &value, sizeof(value));
    return fit(raw_raster_stream({page}));
}

Spoil fit_resolution(unsigned across, unsigned down) {
    RawPage page = good_page();
    page.header.HWResolution[0] = across;
    page.header.HWResolution[1] = down;
    return fit(raw_raster_stream({page}));
}

std::string too_short(const std::string& bytes, const std::string& needed,
                      const std::string& width) {
    return "ERROR: The raster to print is damaged: a cupsBytesPerLine of " + bytes +
           " is less than the " + needed + " that a cupsWidth of " + width + " needs.";
}

std::string too_wide(const std::string& bytes) {
    return "ERROR: The page is too wide: a cupsBytesPerLine of " + bytes +
           " is more than 16777216.";
}

std::string cut(const std::string& row, const std::string& rows) {
    return "ERROR: The raster to print is cut short in row " + row + " of the " + rows +
           " of page 1.";
}

std::string other_resolution(const std::string& resolution) {
    return "ERROR: The page comes in " + resolution +
           "dpi, the printer prints 72dpi. Choose Resolution=72dpi.";
}

std::string no_such_pixels(const std::string& space, int bits_per_color, int bits_per_pixel,
                           int order) {
    return "ERROR: Unable to fit raster of color space " + space + ", " +
           std::to_string(bits_per_color) + " bits per color, " + std::to_string(bits_per_pixel) +
           " bits per pixel, color order " + std::to_string(order) +
           ", 1 colors; only 1-bit and 8-bit grey and 24-bit chunked RGB can be printed.";
}

const char* const damaged =
    "ERROR: The raster to print is damaged: a page's header is cut or makes no sense.";

const std::vector<std::string> whole{"abcdefgh"};

std::vector<MalformedFit> header_rows() {
    return {
        {"cupsWidth_0",
         fit_header(&H::cupsWidth, 0),
         1,
         "ERROR: The raster to print is damaged: a page has a cupsWidth of 0.",
         {}},
        {"cupsWidth_1", fit_header(&H::cupsWidth, 1), 0, "", {hex("61000000 65000000")}},
        {"cupsWidth_5", fit_header(&H::cupsWidth, 5), 1, too_short("4", "5", "5"), {}},
        {"cupsWidth_max",
         fit_header(&H::cupsWidth, max),
         1,
         too_short("4", "4294967295", "4294967295"),
         {}},
        {"cupsHeight_0", fit_header(&H::cupsHeight, 0), 1, damaged, {}},
        // What is left of the pixels is no header.
        {"cupsHeight_1", fit_header(&H::cupsHeight, 1), 1, damaged, {hex("61626364 00000000")}},
        {"cupsHeight_3", fit_header(&H::cupsHeight, 3), 1, cut("3", "3"), whole},
        {"cupsHeight_max", fit_header(&H::cupsHeight, max), 1, cut("3", "4294967295"), whole},
        {"cupsBytesPerLine_0", fit_header(&H::cupsBytesPerLine, 0), 1, damaged, {}},
        {"cupsBytesPerLine_3",
         fit_header(&H::cupsBytesPerLine, 3),
         1,
         too_short("3", "4", "4"),
         {}},
        {"cupsBytesPerLine_5", fit_header(&H::cupsBytesPerLine, 5), 1, cut("2", "2"), {"abcd"}},
        {"cupsBytesPerLine_16777216",
         fit_header(&H::cupsBytesPerLine, 16777216),
         1,
         cut("1", "2"),
         {""}},
        {"cupsBytesPerLine_16777217",
         fit_header(&H::cupsBytesPerLine, 16777217),
         1,
         too_wide("16777217"),
         {}},
        {"cupsBytesPerLine_2147483647",
         fit_header(&H::cupsBytesPerLine, 2147483647),
         1,
         too_wide("2147483647"),
         {}},
        {"cupsBytesPerLine_2147483648",
         fit_header(&H::cupsBytesPerLine, 2147483648U),
         1,
         damaged,
         {}},
        {"cupsBytesPerLine_max", fit_header(&H::cupsBytesPerLine, max), 1, damaged, {}},
        {"cupsBitsPerPixel_0", fit_header(&H::cupsBitsPerPixel, 0), 1, damaged, {}},
        {"cupsBitsPerPixel_1",
         fit_header(&H::cupsBitsPerPixel, 1),
         1,
         no_such_pixels("3", 8, 1, 0),
         {}},
        {"cupsBitsPerPixel_16",
         fit_header(&H::cupsBitsPerPixel, 16),
         1,
         too_short("4", "8", "4"),
         {}},
        {"cupsBitsPerPixel_max", fit_header(&H::cupsBitsPerPixel, max), 1, damaged, {}},
        {"cupsBitsPerColor_0", fit_header(&H::cupsBitsPerColor, 0), 1, damaged, {}},
        {"cupsBitsPerColor_1",
         fit_header(&H::cupsBitsPerColor, 1),
         1,
         no_such_pixels("3", 1, 8, 0),
         {}},
        {"cupsBitsPerColor_16",
         fit_header(&H::cupsBitsPerColor, 16),
         1,
         no_such_pixels("3", 16, 8, 0),
         {}},
        {"cupsBitsPerColor_max", fit_header(&H::cupsBitsPerColor, max), 1, damaged, {}},
        {"HWResolution_0_72", fit_resolution(0, 72), 1, other_resolution("0x72"), {}},
        {"HWResolution_72_1", fit_resolution(72, 1), 1, other_resolution("72x1"), {}},
        {"HWResolution_max", fit_resolution(max, max), 1, other_resolution("4294967295"), {}},
        {"NumCopies_max", fit_header(&H::NumCopies, max), 0, "", whole},
        {"cupsNumColors_0", fit_header(&H::cupsNumColors, 0), 0, "", whole},
        {"cupsColorOrder_3",
         fit_header(&H::cupsColorOrder, 3),
         1,
         no_such_pixels("3", 8, 8, 3),
         {}},
        {"cupsColorSpace_1",
         fit_header(&H::cupsColorSpace, 1),
         1,
         no_such_pixels("1", 8, 8, 0),
         {}},
        {"cupsColorSpace_62",
         fit_header(&H::cupsColorSpace, 62),
         1,
         no_such_pixels("62", 8, 8, 0),
         {}},
        {"cupsColorSpace_max",
         fit_header(&H::cupsColorSpace, max),
         1,
         no_such_pixels("4294967295", 8, 8, 0),
         {}},
        {"cupsCompression_max", fit_header(&H::cupsCompression, max), 0, "", whole},
        {"cupsRowStep_max", fit_header(&H::cupsRowStep, max), 0, "", whole},
    };
}

std::vector<MalformedFit> stream_rows() {
    const std::string good = raw_raster_stream({good_page()});
    const H header = good_page().header;
    const auto packed = [&](const std::string& digits) {
        return fit(stream({2, true}, header, hex(digits)));
    };
    const std::string no_raster = "ERROR: The data to print is not CUPS raster.";
    return {
        {"VersionFour", fit("RaS4" + good.substr(4)), 1, no_raster, {}},
        {"AByteBefore", fit("\n" + good), 1, no_raster, {}},
        {"SyncWordTwice", fit(good.substr(0, 4) + good), 1, damaged, {}},
        {"TwoStreamsInOne", fit(good + good), 1, damaged, whole},
        {"AByteBehind", fit(good + "x"), 1, damaged, whole},
        {"OnlyASyncWord", fit(good.substr(0, 4)), 0, "", {}},
        {"VersionOne", fit(stream({1, false}, header, "abcdefgh")), 0, "", whole},
        {"PackedRunTooLong", packed("01 7F 61"), 0, "", {"aaaaaaaa"}},
        {"PackedRepetitionTooLong", packed("FF FD 61626364"), 0, "", {"abcdabcd"}},
        {"PackedWithoutItsPixel", packed("01 03"), 1, cut("1", "2"), {""}},
        {"PackedWithoutItsSecondRow", packed("00 03 61"), 1, cut("2", "2"), {"aaaa"}},
        {"PackedCleared", packed("01 80"), 0, "", {hex("00000000 00000000")}},
    };
}

std::vector<MalformedFit> fitter_option_rows() {
    const std::string long_text(large, 'x');
    const std::string no_description = "ERROR: Unable to read the printer description \"";
    const std::string lines = "t\nERROR: faked\nSTATE: +paused\n";
    return {
        {"OptionsOfBlanks", fit_options(std::string(large, ' ')), 0, "", whole},
        {"OptionsOfBraces", fit_options("a=" + std::string(large, '{')), 0, "", whole},
        {"OptionsOfStores", fit_options(std::string(large, 'n') + "=%n%n%s%s"), 0, "", whole},
        {"OptionsOfLogLines", fit_options(lines + "a='" + lines + "'"), 0, "", whole},
        {"PageSizeOfFormatCharacters", fit_options("PageSize=%s%n%x"), 0, "", whole},
        {"ResolutionOfFormatCharacters", fit_options("Resolution=%s%n%x"), 0, "", whole},
        {"UserTitleAndCopiesOfLogLines", fit_arguments({lines, lines, lines, lines, ""}), 0, "",
         whole},
        {"UserTitleAndCopiesOfFormats", fit_arguments({"%n", "%s%n", "%n%s", "%n", ""}), 0, "",
         whole},
        {"TitleLarge", fit_arguments({"1", "user", long_text, "1", ""}), 0, "", whole},
        {"FileOfFormatCharacters",
         fit_arguments({"1", "user", "title", "1", "", "%s%n%x"}),
         1,
         "ERROR: Unable to open the raster file \"%s%n%x\": No such file or directory.",
         {}},
        {"DescriptionOfFormatCharacters",
         fit_ppd_path("%s%n%x"),
         1,
         no_description + "%s%n%x\": Unable to open PPD file on line 0.",
         {}},
        {"DescriptionThroughAFile",
         fit_ppd_path("/etc/passwd/x"),
         1,
         no_description + "/etc/passwd/x\": Unable to open PPD file on line 0.",
         {}},
        {"DescriptionOfNothing",
         fit_ppd_path("/dev/null"),
         1,
         no_description + "/dev/null\": Missing PPD-Adobe-4.x header on line 0.",
         {}},
        // libcups makes a page of one bit a dot of it.
        {"DescriptionWithoutPages",
         fit_ppd(Ppd().text()),
         1,
         "ERROR: The printer description asks for raster of color space 3 with 1 bits per color; "
         "only "
         "8-bit black (3) or white (0) can be printed.",
         {}},
    };
}

class MalformedFitterJob : public testing::TestWithParam<MalformedFit> {};

TEST_P(MalformedFitterJob, EndsAsInTheTable) {
    const MalformedFit& row = GetParam();
    const Sandbox sandbox;
    Command command = row.make(sandbox);
    command.limits.push_back(processor_time());
    const JobResult result = sandbox.run(command);
    EXPECT_EQ(result.exit_status, row.status) << result.error;
    EXPECT_EQ(complaints(result.error), row.message);
    std::vector<std::string> written;
    if (!result.output.empty()) {
        for (const RawPage& page : pages_in(result.output)) {
            written.push_back(page.pixels);
        }
    }
    EXPECT_EQ(written, row.pages);
}

INSTANTIATE_TEST_SUITE_P(Header, MalformedFitterJob, testing::ValuesIn(header_rows()),
                         row_name<MalformedFit>);
INSTANTIATE_TEST_SUITE_P(Stream, MalformedFitterJob, testing::ValuesIn(stream_rows()),
                         row_name<MalformedFit>);
INSTANTIATE_TEST_SUITE_P(Other, MalformedFitterJob, testing::ValuesIn(fitter_option_rows()),
                         row_name<MalformedFit>);

}  // namespace
}  // namespace kelp_test
