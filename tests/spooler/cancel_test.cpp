// A job taken back while it prints.

#include <algorithm>

#include "tests/spooler/spooler_test.h"
#include "tests/spooler/wait_until.h"

namespace kelp_test {
namespace {

class CancelTest : public SpoolerTest {};

TEST_F(CancelTest, ACancelledJobLeavesNothingBehindAndTheNextPrintsWhole) {
    const std::string noise =
        document("noise.pdf", Format::pdf, label_sheet, noise_pages({144, 216}, 12));
    label_printer.stall_after(10000);
    const int job = spooler.print({"-d", "label", noise});
    ASSERT_TRUE(wait_until([&] { return label_printer.is_stalled(); }));
    ASSERT_EQ(spooler.job(job).state, IPP_JSTATE_PROCESSING);
    const std::vector<std::string> programs = spooler.running_programs();
    ASSERT_TRUE(std::any_of(programs.begin(), programs.end(),
                            [](const std::string& program) {
                                return program.find("rastertokelp ") != std::string::npos;
                            }))
        << "the filter is done already: " << testing::PrintToString(programs);

    const ProcessResult cancel = spooler.run({"cancel", "label-" + std::to_string(job)});
    EXPECT_EQ(cancel.exit_status, 0) << cancel.error;
    EXPECT_EQ(spooler.wait_for(job).state, IPP_JSTATE_CANCELED);
    EXPECT_TRUE(wait_until([&] { return spooler.running_programs().empty(); }))
        << testing::PrintToString(spooler.running_programs());

    label_printer.go_on();
    ASSERT_TRUE(wait_until([&] { return label_printer.connections().at(0).closed; }));
    // The beginning of what the filter made of its raster, and not all twelve pages.
    const std::string whole =
        run_again(read_record(spooler.folders().records(), job), filter_program()).output;
    const std::string received = label_printer.connections().at(0).bytes;
    EXPECT_TRUE(whole.starts_with(received));
    std::size_t labels = 0;
    for (std::size_t at = received.find("^PQ"); at != std::string::npos;
         at = received.find("^PQ", at + 1)) {
        ++labels;
    }
    EXPECT_LT(labels, 12U);
    EXPECT_EQ(spooler.job(job).state, IPP_JSTATE_CANCELED);
    expect_ready("label");
}

TEST_F(CancelTest, AJobCancelledWhileItWaitsNeverReachesThePrinter) {
    const std::string noise =
        document("noise.pdf", Format::pdf, label_sheet, noise_pages({144, 216}, 12));
    label_printer.stall_after(10000);
    const int first = spooler.print({"-d", "label", noise});
    ASSERT_TRUE(wait_until([&] { return label_printer.is_stalled(); }));
    const int second = spooler.print({"-d", "label", noise});
    spooler.run({"cancel", "label-" + std::to_string(second)});
    label_printer.go_on();

    expect_completed(first);
    EXPECT_EQ(spooler.job(second).state, IPP_JSTATE_CANCELED);
    EXPECT_FALSE(has_record(spooler.folders().records(), second));
    ASSERT_EQ(label_printer.connections().size(), 1U);
    expect_made_from(read_record(spooler.folders().records(), first),
                     label_printer.received().at(0));
}

}  // namespace
}  // namespace kelp_test
