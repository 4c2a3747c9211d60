// A driverless queue of the spooler, whose printer is the printer application.

#include <ostream>
#include <sstream>

#include "tests/app/application.h"
#include "tests/app/filter_bytes.h"
#include "tests/spooler/spooler_test.h"
#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

struct Tablet {
    const char* model;
    Sheet sheet;
};

void PrintTo(const Tablet& value, std::ostream* out) {
    *out << value.model;
}

class EverywhereTest : public SpoolerTest, public testing::WithParamInterface<Tablet> {
  protected:
    EverywhereTest() {
        application.add_printer("tablet", "kelp-" + model(), device.device());
        add_queue({"-m", "everywhere"});
    }

    static std::string model() { return GetParam().model; }
    static Sheet sheet() { return GetParam().sheet; }

    void add_queue(const std::vector<std::string>& more) {
        std::vector<std::string> command = {
            "lpadmin",
            "-p",
            "everywhere",
            "-E",
            "-v",
            "ipp://localhost:" + std::to_string(application.port()) + "/ipp/print/tablet"};
        command.insert(command.end(), more.begin(), more.end());
        const ProcessResult added = spooler.run(command);
        EXPECT_EQ(added.exit_status, 0) << added.error;
    }

    // The spooler writes it when it likes.
    std::filesystem::path ppd_file() const {
        return spooler.folders().root() / "etc/ppd/everywhere.ppd";
    }

    // From now on the queue sends everything as raster, as for a printer that takes nothing else.
    void send_raster_only() {
        ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(ppd_file()); }));
        std::istringstream lines(read_file(ppd_file()));
        std::string kept;
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("*cupsFilter2:") || line.find("image/urf") != std::string::npos) {
                kept += line + "\n";
            }
        }
        write_file(file("raster.ppd"), kept);
        add_queue({"-P", file("raster.ppd").string()});
    }

    std::string printed_everywhere(const std::string& document) {
        const std::size_t before = device.received().size();
        expect_completed(spooler.print({"-d", "everywhere", document}));
        EXPECT_TRUE(wait_until([&] { return device.received().size() > before; }));
        return device.received().size() > before ? device.received().back() : std::string();
    }

    // What the filter prints of the raster that the queue's filters make of the document.
    std::string expected(const std::string& document) const {
        Command rasterise;
        rasterise.program = KELP_CUPSFILTER;
        rasterise.arguments = {"-p",    file("raster.ppd").string(), "-m", "image/urf", "-e",
                               document};
        rasterise.environment = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"},
                                 {"TMPDIR", spooler.folders().extras().string()},
                                 {"HOME", spooler.folders().extras().string()},
                                 {"LC_ALL", "C"}};
        rasterise.working_directory = spooler.folders().extras();
        const ProcessResult result = run_process(rasterise);
        EXPECT_EQ(result.exit_status, 0) << result.error;
        EXPECT_TRUE(result.output.starts_with("UNIRAST")) << result.error;
        // Such raster says nothing of copies; the application knows the job's.
        std::string bytes = filter_bytes_of_raster(model(), result.output);
        const std::size_t copies = bytes.find("^PQ0");
        EXPECT_NE(copies, std::string::npos);
        return bytes.replace(copies, 4, "^PQ1");
    }

    SocketPrinter device;
    Application application;
};

TEST_P(EverywhereTest, PrintsTheFiltersBytesOfItsRaster) {
    send_raster_only();
    write_file(file("a.txt"), "Kelp\n\n  1  sheet of A\n  2  sheets of B\n");
    for (const std::string& document :
         {document("a.pdf", Format::pdf, sheet(), asymmetric_picture(sheet())),
          document("a.png", Format::png, sheet(), asymmetric_picture(sheet())),
          file("a.txt").string()}) {
        const std::string bytes = printed_everywhere(document);
        EXPECT_TRUE(bytes == expected(document)) << document;
        EXPECT_EQ(read_labels(bytes).size(), 1U);
    }
}

// As the spooler sends them by itself: the application draws them.
TEST_P(EverywhereTest, PrintsDocumentsOnPagesOfTheirSize) {
    write_file(file("a.txt"), "Kelp\n\n  1  sheet of A\n  2  sheets of B\n");
    const std::string driver = model() == "label-4inch" ? "label" : "stencil";
    for (const std::string& document :
         {document("a.pdf", Format::pdf, sheet(), asymmetric_picture(sheet())),
          document("a.png", Format::png, sheet(), asymmetric_picture(sheet())),
          file("a.txt").string()}) {
        const std::string bytes = printed_everywhere(document);
        const std::vector<PrintedLabel> labels = read_labels(bytes);
        const std::vector<PrintedLabel> with_driver = print(driver, {document}).labels();
        ASSERT_EQ(labels.size(), 1U);
        ASSERT_EQ(with_driver.size(), 1U);
        EXPECT_EQ(labels[0].setup, with_driver[0].setup) << document;
    }
}

INSTANTIATE_TEST_SUITE_P(Models, EverywhereTest,
                         testing::Values(Tablet{"label-4inch", {288, 432}},
                                         Tablet{"stencil-a5", {420, 595}}),
                         [](const auto& each) {
                             const std::string model = each.param.model;
                             return model.substr(0, model.find('-'));
                         });

}  // namespace
}  // namespace kelp_test
