// The copy of what is sent, which a person switches on for a report.

#include "tests/spooler/ppd_edit.h"
#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

class RecordingTest : public SpoolerTest {
  protected:
    std::string picture() const {
        return document("a.pdf", Format::pdf, label_sheet, asymmetric_picture(label_sheet));
    }
    // The files of the folder whose name starts so.
    static std::vector<std::string> recordings(const std::filesystem::path& folder,
                                               const std::string& start) {
        std::vector<std::string> contents;
        for (const auto& [name, content] : read_directory(folder)) {
            if (name.starts_with(start) && name.ends_with(".bin")) {
                contents.push_back(content);
            }
        }
        return contents;
    }
};

TEST_F(RecordingTest, HoldsWhatThePrinterGot) {
    const std::string base = file("recording").string();
    std::string ppd = read_file(ppd_of("label-4inch"));
    set_value(ppd, "kelpFilterOutputFile", "\"" + base + "\"");
    write_file(file("edited.ppd"), ppd);
    spooler.add_queue("label", file("edited.ppd"), label_printer.device());

    const Printed printed =
        print_unchecked("label", {"-n", "2", "-o", "RecordPrinterCommands=1", picture()});
    const std::vector<std::string> found = recordings(spooler.folders().extras(), "recording-");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0] == printed.bytes);
    EXPECT_EQ(read_labels(found[0]).at(0).copies, 2);
}

TEST_F(RecordingTest, LiesWhereTheDriverSays) {
    const Printed printed =
        print_unchecked("stencil", {"-o", "RecordPrinterCommands=1", picture()});
    const std::vector<std::string> found =
        recordings(spooler.folders().world() / "var/spool/cups/tmp", "kelp-");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0] == printed.bytes);
}

TEST_F(RecordingTest, IsNotMadeUnasked) {
    print_unchecked("label", {picture()});
    EXPECT_TRUE(recordings(spooler.folders().world() / "var/spool/cups/tmp", "kelp-").empty());
}

}  // namespace
}  // namespace kelp_test
