// Printer commands that are ready pass through.

#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

class RawTest : public SpoolerTest {
  protected:
    // What the printer gets of a file that holds these bytes.
    std::string print_raw(const std::string& bytes) {
        write_file(file("label.zpl"), bytes);
        const Printed printed = print_unchecked("label", {"-o", "raw", file("label.zpl").string()});
        EXPECT_FALSE(has_record(spooler.folders().records(), printed.job)) << "it was filtered";
        return printed.bytes;
    }
};

TEST_F(RawTest, ReadyCommandsReachThePrinterUntouched) {
    const std::string label = "^XA\r\n^FO50,50^A0N,40,40^FDKelp^FS\n^PQ2\n^XZ\n";
    EXPECT_EQ(print_raw(label), label);
}

TEST_F(RawTest, EveryByteReachesThePrinterUntouched) {
    std::string bytes = "~DYR:A.PNG,B,P,256,,";
    for (int value = 0; value < 256; ++value) {
        bytes.push_back(static_cast<char>(value));
    }
    EXPECT_EQ(print_raw(bytes), bytes);
}

TEST_F(RawTest, ADocumentOfAKnownKindIsNotConvertedEither) {
    const std::string pdf =
        document("a.pdf", Format::pdf, label_sheet, asymmetric_picture(label_sheet));
    EXPECT_EQ(print_raw(read_file(pdf)), read_file(pdf));
}

}  // namespace
}  // namespace kelp_test
