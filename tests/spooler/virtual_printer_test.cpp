// A queue whose printer is kelp-preview listen.

#include "tests/preview/listen/running_listener.h"
#include "tests/preview/read_png.h"
#include "tests/spooler/local_port.h"
#include "tests/spooler/spooler_test.h"
#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {
namespace {

// The rows of a label as a printer has them, '#' for a dot.
std::vector<std::string> drawn_rows(const PrintedLabel& label) {
    std::vector<std::string> rows;
    for (unsigned y = 0; y < label.rows.size(); ++y) {
        std::string row;
        for (unsigned x = 0; x < label.row_bytes * 8; ++x) {
            row += label.prints(x, y) ? '#' : '.';
        }
        rows.push_back(row);
    }
    return rows;
}

TEST_F(SpoolerTest, AVirtualPrinterIsAPrinterToTheSpooler) {
    const TempDir dir;
    RunningListener printer(dir.path());
    spooler.add_queue("virtual", ppd_of("label-4inch"), socket_device(printer.port()));
    const std::string pages = document("a.pdf", Format::pdf, label_sheet, numbered_pages(2));
    for (std::size_t job = 1; job <= 2; ++job) {
        expect_completed(spooler.print({"-d", "virtual", pages}));
        ASSERT_TRUE(wait_until([&] { return printer.output().size() == job; }));
        const std::filesystem::path stored = printer.jobs() / ("job-000" + std::to_string(job));
        const std::vector<PrintedLabel> labels = read_labels(read_file(stored / "job.zpl"));
        ASSERT_EQ(labels.size(), 2U);
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const std::string name = "label-" + std::to_string(i + 1) + ".png";
            EXPECT_EQ(read_png(stored / name).rows, drawn_rows(labels[i])) << name;
        }
        EXPECT_NE(labels[0].rows, labels[1].rows);
    }
    EXPECT_EQ(printer.stop(), 0);
}

}  // namespace
}  // namespace kelp_test
