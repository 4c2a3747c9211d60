// Options on the command line that no printer can follow: the job prints as if they had not been
// given, or says why it cannot; the queue goes on.

#include <cctype>

#include "tests/spooler/spooler_test.h"

namespace kelp_test {
namespace {

std::string test_name(const std::string& text) {
    std::string name;
    for (const char c : text) {
        name += c == '-' ? "Minus" : std::isalnum(c) != 0 ? std::string(1, c) : "_";
    }
    return name;
}

class BadOptionsTest : public SpoolerTest {
  protected:
    std::string picture() const {
        return document("a.pdf", Format::pdf, label_sheet, asymmetric_picture(label_sheet));
    }
};

TEST_F(BadOptionsTest, UnknownChoicesPrintWithTheDefaults) {
    const std::string path = picture();
    const Printed plain = print_on_label({path});
    for (const char* option : {"Darkness=99",        "Darkness=-99",
                               "Darkness=banana",    "Darkness=",
                               "PrintSpeed=-1",      "PrintSpeed=warp",
                               "Brightness=1000",    "HalftoneType=Foo",
                               "MediaMethod=Foo",    "PaperType=Foo",
                               "GapsHeight=-3",      "PostAction=Explode",
                               "Origin=Sideways",    "MirrorImage=maybe",
                               "NegativeImage=True", "RecordPrinterCommands=banana",
                               "Resolution=600dpi",  "ColorModel=RGB",
                               "PageSize=Nonsense",  "media=Nonsense",
                               "NoSuchOption=1"}) {
        SCOPED_TRACE(option);
        const Printed printed = print_unchecked("label", {"-o", option, path});
        EXPECT_TRUE(printed.bytes == plain.bytes);
        EXPECT_NE(spooler.queue("label").state, IPP_PSTATE_STOPPED);
    }
    expect_ready("label");
}

TEST_F(BadOptionsTest, SomeOptionsAreRefusedBeforeThereIsAJob) {
    const std::string path = picture();
    for (const char* option :
         {"copies=0", "copies=100000", "number-up=99", "page-ranges=nonsense"}) {
        SCOPED_TRACE(option);
        EXPECT_FALSE(spooler.try_to_print({"-d", "label", "-o", option, path}).has_value());
    }
    expect_ready("label");
}

class SenselessSizeTest : public BadOptionsTest, public testing::WithParamInterface<std::string> {};

TEST_P(SenselessSizeTest, EndsWithAClearLineInTheLog) {
    const int job = spooler.print({"-d", "label", "-o", "PageSize=" + GetParam(), picture()});
    const JobStatus status = spooler.wait_for(job);
    EXPECT_TRUE(status.state == IPP_JSTATE_STOPPED || status.state == IPP_JSTATE_ABORTED)
        << ippEnumString("job-state", status.state);
    const std::string log = spooler.log_of(job);
    bool told = false;
    for (const char* message :
         {"Paper size must not less than 1.0 :",
          " is none that the printer takes: 9.9 x 9.9 mm to 104.1 x 999.8 mm.",
          " is too small to print on."}) {
        told = told || log.find(message) != std::string::npos;
    }
    EXPECT_TRUE(told) << log;
    expect_ready("label");
}

INSTANTIATE_TEST_SUITE_P(Sizes, SenselessSizeTest,
                         testing::Values("Custom.0x0", "Custom.banana", "Custom.-5x10",
                                         "Custom.1x1", "Custom.100000x100000mm", "Custom.4x400in",
                                         "Custom.110x50mm"),
                         [](const auto& size) { return test_name(size.param); });

}  // namespace
}  // namespace kelp_test
