#include "tests/spooler/spooler_test.h"

#include "tests/spooler/wait_until.h"
#include "tests/support/files.h"

namespace kelp_test {

SpoolerTest::SpoolerTest() {
    spooler.add_queue("label", ppd_of("label-4inch"), label_printer.device());
    spooler.add_queue("stencil", ppd_of("stencil-a5"), stencil_printer.device());
}

void SpoolerTest::TearDown() {
    std::vector<std::string> left;
    if (!wait_until([&] { return (left = spooler.running_programs()).empty(); },
                    std::chrono::seconds(20))) {
        ADD_FAILURE() << "left over: " << testing::PrintToString(left);
    }
    if (HasFailure()) {
        std::cerr << "The spooler's log:\n" << read_file(spooler.folders().error_log());
    }
}

std::filesystem::path SpoolerTest::ppd_of(const std::string& model) {
    return std::filesystem::path(KELP_PPD_DIR) / ("kelp-" + model + ".ppd");
}

std::string SpoolerTest::document(const std::string& name, Format format, const Sheet& sheet,
                                  const std::string& postscript, int dots_per_inch) const {
    make_document(file(name), format, sheet, postscript, dots_per_inch);
    return file(name).string();
}

void SpoolerTest::expect_completed(int job) const {
    const JobStatus status = spooler.wait_for(job);
    EXPECT_EQ(status.state, IPP_JSTATE_COMPLETED)
        << "job " << job << ": " << status.reasons << ", " << status.printer_message;
}

SpoolerTest::Printed SpoolerTest::print_unchecked(const std::string& queue,
                                                  const std::vector<std::string>& arguments) {
    const SocketPrinter& printer = printer_of(queue);
    const std::size_t before = printer.received().size();
    std::vector<std::string> all{"-d", queue};
    all.insert(all.end(), arguments.begin(), arguments.end());

    Printed printed;
    printed.job = spooler.print(all);
    expect_completed(printed.job);
    EXPECT_TRUE(
        wait_until([&] { return printer.received().size() > before; }, std::chrono::seconds(5)));
    const std::vector<std::string> received = printer.received();
    EXPECT_EQ(received.size(), before + 1);
    if (received.size() > before) {
        printed.bytes = received[before];
    }
    if (has_record(spooler.folders().records(), printed.job)) {
        printed.record = read_record(spooler.folders().records(), printed.job);
    }
    return printed;
}

SpoolerTest::Printed SpoolerTest::print(const std::string& queue,
                                        const std::vector<std::string>& arguments) {
    Printed printed = print_unchecked(queue, arguments);
    expect_made_from(printed.record, printed.bytes);
    return printed;
}

void SpoolerTest::expect_ready(const std::string& queue) {
    const QueueStatus status = spooler.queue(queue);
    EXPECT_NE(status.state, IPP_PSTATE_STOPPED) << status.reasons << ", " << status.message;
    EXPECT_TRUE(status.is_accepting) << status.reasons << ", " << status.message;
    write_file(file("ready.txt"), "ready\n");
    const Printed printed = print(queue, {file("ready.txt").string()});
    EXPECT_EQ(printed.labels().size(), 1U);
}

}  // namespace kelp_test
