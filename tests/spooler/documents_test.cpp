// Every common kind of document, on a label and on a stencil queue, with the drivers' defaults.

#include <ostream>

#include "tests/spooler/spooler_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

struct Queue {
    const char* name;
    Sheet sheet;
};

void PrintTo(const Queue& value, std::ostream* out) {
    *out << value.name;
}

class DocumentsTest : public SpoolerTest, public testing::WithParamInterface<Queue> {
  protected:
    std::string queue() const { return GetParam().name; }
    Sheet sheet() const { return GetParam().sheet; }
};

TEST_P(DocumentsTest, PdfPrintsWhatTheFilterMakesOfItsRaster) {
    const Printed printed =
        print(queue(), {document("a.pdf", Format::pdf, sheet(), asymmetric_picture(sheet()))});
    EXPECT_EQ(printed.labels().size(), 1U);
}

TEST_P(DocumentsTest, PngPrintsWhatTheFilterMakesOfItsRaster) {
    const Printed printed =
        print(queue(), {document("a.png", Format::png, sheet(), asymmetric_picture(sheet()))});
    EXPECT_EQ(printed.labels().size(), 1U);
}

TEST_P(DocumentsTest, JpegPrintsWhatTheFilterMakesOfItsRaster) {
    const Printed printed =
        print(queue(), {document("a.jpg", Format::jpeg, sheet(), asymmetric_picture(sheet()))});
    EXPECT_EQ(printed.labels().size(), 1U);
}

TEST_P(DocumentsTest, TextPrintsWhatTheFilterMakesOfItsRaster) {
    write_file(file("a.txt"), "Kelp\n\n  1  sheet of A\n  2  sheets of B\n");
    const Printed printed = print(queue(), {file("a.txt").string()});
    EXPECT_EQ(printed.labels().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Queues, DocumentsTest,
                         testing::Values(Queue{"label", {288, 432}}, Queue{"stencil", {420, 595}}),
                         [](const auto& queue) { return std::string(queue.param.name); });

}  // namespace
}  // namespace kelp_test
