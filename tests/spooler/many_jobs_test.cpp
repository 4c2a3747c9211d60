// Two queues busy at the same time.

#include "tests/spooler/spooler_test.h"

namespace kelp_test {
namespace {

class ManyJobsTest : public SpoolerTest {};

TEST_F(ManyJobsTest, TenJobsOnTwoQueuesEachPrintWholeAndInOrder) {
    const std::string label = document("label.pdf", Format::pdf, label_sheet, numbered_pages(2));
    const std::string stencil =
        document("stencil.png", Format::png, stencil_sheet, asymmetric_picture(stencil_sheet));
    std::vector<int> label_jobs;
    std::vector<int> stencil_jobs;
    for (int i = 1; i <= 5; ++i) {
        // Each job says in its set-up which one it is.
        const std::string darkness = "Darkness=" + std::to_string(i);
        label_jobs.push_back(spooler.print({"-d", "label", "-o", darkness, label}));
        stencil_jobs.push_back(spooler.print({"-d", "stencil", "-o", darkness, stencil}));
    }

    const auto expect_all = [&](const std::vector<int>& jobs, const SocketPrinter& printer) {
        for (const int job : jobs) {
            expect_completed(job);
        }
        const std::vector<std::string> received = printer.received();
        ASSERT_EQ(received.size(), jobs.size());
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            SCOPED_TRACE("job " + std::to_string(jobs[i]));
            expect_made_from(read_record(spooler.folders().records(), jobs[i]), received[i]);
            EXPECT_NE(
                read_labels(received[i]).at(0).setup.find("~SD" + std::to_string(i + 1) + "\r\n"),
                std::string::npos);
        }
    };
    expect_all(label_jobs, label_printer);
    expect_all(stencil_jobs, stencil_printer);
}

}  // namespace
}  // namespace kelp_test
