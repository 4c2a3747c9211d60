// A driver edited by hand: unknown defaults, options cut out.

#include "tests/spooler/ppd_edit.h"
#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

class BadPpdTest : public SpoolerTest {
  protected:
    template <typename Edit>
    void edit_label_queue(Edit edit) {
        std::string ppd = read_file(ppd_of("label-4inch"));
        edit(ppd);
        write_file(file("edited.ppd"), ppd);
        spooler.add_queue("label", file("edited.ppd"), label_printer.device());
    }
    PrintedLabel print_picture(const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = options;
        arguments.push_back(
            document("a.pdf", Format::pdf, label_sheet, asymmetric_picture(label_sheet)));
        const std::vector<PrintedLabel> labels = print_on_label(arguments).labels();
        EXPECT_EQ(labels.size(), 1U);
        return labels.empty() ? PrintedLabel{} : labels[0];
    }
};

const std::string size_lines = "SIZE 101.6 mm, 152.4 mm\r\n^XX\r\n^PW811\r\n^LL1217\r\n";

// An option whose default is none of its choices counts as not given: darkness 0, no speed, no
// method, no gap, no action.
TEST_F(BadPpdTest, DefaultsThatAreNoChoicesCountAsNotGiven) {
    edit_label_queue([](std::string& ppd) {
        set_value(ppd, "DefaultDarkness", "banana");
        set_value(ppd, "DefaultPrintSpeed", "warp");
        set_value(ppd, "DefaultMediaMethod", "Foo");
        set_value(ppd, "DefaultPaperType", "Foo");
        set_value(ppd, "DefaultGapsHeight", "-3");
        set_value(ppd, "DefaultPostAction", "Explode");
        set_value(ppd, "DefaultOrigin", "Sideways");
        set_value(ppd, "DefaultHalftoneType", "Foo");
        set_value(ppd, "DefaultBrightness", "bright");
        set_value(ppd, "DefaultMirrorImage", "maybe");
    });
    EXPECT_EQ(print_picture().setup, size_lines + "^MNN\r\n^PON\r\n~SD0\r\n^XZ\r\n\r\n");
    expect_ready("label");
}

TEST_F(BadPpdTest, OptionsCutOutCountAsNotGiven) {
    edit_label_queue([](std::string& ppd) {
        for (const char* option :
             {"Darkness", "PrintSpeed", "MediaMethod", "PaperType", "GapsHeight", "PostAction",
              "Origin", "HalftoneType", "Brightness", "MirrorImage", "RecordPrinterCommands"}) {
            remove_option(ppd, option);
        }
    });
    EXPECT_EQ(print_picture().setup, size_lines + "^MNN\r\n^PON\r\n~SD0\r\n^XZ\r\n\r\n");
    EXPECT_EQ(print_picture({"-o", "Darkness=20"}).setup,
              size_lines + "^MNN\r\n^PON\r\n~SD0\r\n^XZ\r\n\r\n");
    expect_ready("label");
}

// Text is the number 0; an unknown speed is none; so is an unknown action.
TEST_F(BadPpdTest, UnknownChoicesAreReadAsTheyStand) {
    edit_label_queue([](std::string& ppd) {
        rename_choice(ppd, "Darkness", "20", "banana");
        rename_choice(ppd, "PrintSpeed", "4", "warp");
        rename_choice(ppd, "MediaMethod", "Direct", "Foo");
        rename_choice(ppd, "PaperType", "LabelMark", "Bar");
        rename_choice(ppd, "PostAction", "Cut", "Explode");
        rename_choice(ppd, "HalftoneType", "Burkes", "Baz");
    });
    EXPECT_EQ(
        print_picture({"-o", "Darkness=banana", "-o", "PrintSpeed=warp", "-o", "MediaMethod=Foo",
                       "-o", "PaperType=Bar", "-o", "PostAction=Explode", "-o", "HalftoneType=Baz"})
            .setup,
        size_lines + "^PON\r\n~SD0\r\n^XZ\r\n\r\n");
    expect_ready("label");
}

TEST_F(BadPpdTest, ADarknessBeyondThePrintersRangeSendsNothing) {
    edit_label_queue([](std::string& ppd) { rename_choice(ppd, "Darkness", "20", "99"); });
    EXPECT_EQ(print_picture({"-o", "Darkness=99"}).setup,
              size_lines + "^MNY\r\n^PON\r\n^XZ\r\n\r\n");
    expect_ready("label");
}

TEST_F(BadPpdTest, AJobWithoutAnyKnownSizeEndsWithAClearLineInItsLogAndTheQueueGoesOn) {
    edit_label_queue([](std::string& ppd) {
        for (const char* keyword : {"DefaultPageSize", "DefaultPageRegion", "DefaultImageableArea",
                                    "DefaultPaperDimension"}) {
            set_value(ppd, keyword, "Nonsense");
        }
    });
    const int job = spooler.print(
        {"-d", "label",
         document("a.pdf", Format::pdf, label_sheet, asymmetric_picture(label_sheet))});
    EXPECT_NE(spooler.wait_for(job).state, IPP_JSTATE_COMPLETED);
    EXPECT_NE(spooler.log_of(job).find("Paper size must not less than 1.0 :"), std::string::npos)
        << spooler.log_of(job);
    EXPECT_NE(spooler.queue("label").state, IPP_PSTATE_STOPPED);
    print_picture({"-o", "PageSize=4x6in"});
}

}  // namespace
}  // namespace kelp_test
