// The test label: from the web page and as a document.

#include <gtest/gtest.h>

#include "pictures/document_picture.h"
#include "tests/app/app_test.h"
#include "tests/app/filter_bytes.h"
#include "tests/app/web_client.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

struct ModelLabel {
    const char* model;
    unsigned width;  // of the page, in dots
    unsigned height;
};

class AppTestLabel : public AppTest {
  protected:
    // What a queue of the model prints of the label's file.
    static std::string expected(const ModelLabel& label) {
        const std::string path =
            std::string(KELP_TEST_LABEL_DIR) + "/test-label-" + label.model + ".ps";
        const GreyPicture picture = pictureOfDocument(path, 1, {label.width, label.height}, [] {});
        EXPECT_EQ(picture.width, label.width);
        EXPECT_EQ(picture.height, label.height);
        Page page;
        page.width = label.width;
        page.height = label.height;
        page.color_space = CUPS_CSPACE_SW;
        page.pixels.assign(picture.pixels.begin(), picture.pixels.end());
        return filter_bytes(label.model, {page});
    }
};

TEST_F(AppTestLabel, IsThatOfThePrintersModel) {
    for (const ModelLabel& label :
         {ModelLabel{"label-2inch", 406, 203}, ModelLabel{"label-4inch", 812, 1218}}) {
        SocketPrinter own;
        application.add_printer(label.model, std::string("kelp-") + label.model, own.device());
        const IppPrinter printer(application.port(), label.model);
        const int number = printer.print("application/vnd.kelp-test-label", "kelp test label\n");
        EXPECT_EQ(printer.finished(number).state, IPP_JSTATE_COMPLETED);
        ASSERT_TRUE(wait_until([&] { return own.received().size() == 1; }));
        EXPECT_EQ(own.received()[0], expected(label)) << label.model;
    }
}

// Whatever is behind the line that asks for it: a program would paint the page black, or never end.
TEST_F(AppTestLabel, TheDocumentThatAsksForItIsNotReadFurther) {
    add_printer("label-4inch");
    const std::string own = expected({"label-4inch", 812, 1218});
    for (const char* more :
         {"%!PS\n0 0 600 900 rectfill showpage\n", "%!PS\n{ } loop\n", "^XA^FDmore^FS^XZ\n"}) {
        EXPECT_EQ(
            printed("application/vnd.kelp-test-label", std::string("kelp test label\n") + more),
            own)
            << more;
    }
}

TEST_F(AppTestLabel, IsPrintedByAButtonOfTheWebPage) {
    add_printer("label-4inch");
    const std::string page = send_form(application.port(), "/labels/", "action=print-test-page");
    EXPECT_NE(page.find("Test page printed."), std::string::npos) << page;
    ASSERT_TRUE(wait_until([&] { return device.received().size() == 1; }));
    EXPECT_EQ(device.received()[0], expected({"label-4inch", 812, 1218}));
    EXPECT_EQ(printer().finished(1).state, IPP_JSTATE_COMPLETED);
}

TEST_F(AppTestLabel, LeavesNoFile) {
    add_printer("label-4inch");
    printed("application/vnd.kelp-test-label", "kelp test label\n");
    for (const auto& file :
         std::filesystem::directory_iterator(application.state_folder() / "spool")) {
        EXPECT_EQ(file.path().filename().string().find("test-label-"), std::string::npos)
            << file.path();
    }
}

}  // namespace
}  // namespace kelp_test
