// A printer that goes away in the middle of a job: nothing counts as printed that it did not get.

#include "tests/spooler/spooler_test.h"
#include "tests/spooler/wait_until.h"

namespace kelp_test {
namespace {

class LostPrinterTest : public SpoolerTest {
  protected:
    // Starts a long job on the label queue, of which the printer takes a part and goes. Returns
    // when the spooler has noticed.
    int lose_printer(const std::string& policy) {
        spooler.add_queue("label", ppd_of("label-4inch"), label_printer.device(),
                          {"-o", "printer-error-policy=" + policy});
        const std::string noise =
            document("noise.pdf", Format::pdf, label_sheet, noise_pages({144, 216}, 12));
        label_printer.go_away_after(100000);
        const int job = spooler.print({"-d", "label", noise});
        EXPECT_TRUE(wait_until([&] { return label_printer.is_away(); }));
        EXPECT_TRUE(wait_until([&] {
            return spooler.log_of(job).find("backend/socket) ") != std::string::npos &&
                   spooler.job(job).state != IPP_JSTATE_PROCESSING;
        })) << spooler.job(job).state;
        return job;
    }

    void expect_printed_whole_at_last(int job) {
        expect_completed(job);
        const std::vector<std::string> received = label_printer.received();
        ASSERT_EQ(received.size(), 1U);
        expect_made_from(read_record(spooler.folders().records(), job), received[0]);
    }
};

TEST_F(LostPrinterTest, TheQueueWaitsWithTheJobAndPrintsItWholeWhenStartedAgain) {
    const int job = lose_printer("stop-printer");
    EXPECT_EQ(spooler.queue("label").state, IPP_PSTATE_STOPPED);
    EXPECT_TRUE(spooler.queue("label").is_accepting);
    EXPECT_LT(spooler.job(job).state, IPP_JSTATE_CANCELED) << "it is not done in any way";
    EXPECT_TRUE(label_printer.received().empty());

    label_printer.come_back();
    EXPECT_EQ(spooler.run({"cupsenable", "label"}).exit_status, 0);
    expect_printed_whole_at_last(job);
}

TEST_F(LostPrinterTest, TheJobIsTriedAgainByItselfWhereThePolicySaysSo) {
    const int job = lose_printer("retry-job");
    EXPECT_LT(spooler.job(job).state, IPP_JSTATE_CANCELED);
    EXPECT_TRUE(label_printer.received().empty());

    label_printer.come_back();
    expect_printed_whole_at_last(job);
}

TEST_F(LostPrinterTest, AnAbortedJobIsNotReportedAsPrintedAndTheNextOneIs) {
    const int job = lose_printer("abort-job");
    EXPECT_EQ(spooler.job(job).state, IPP_JSTATE_ABORTED);
    EXPECT_TRUE(label_printer.received().empty());

    label_printer.come_back();
    expect_ready("label");
}

}  // namespace
}  // namespace kelp_test
