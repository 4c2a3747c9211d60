#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/spooler/documents.h"
#include "tests/spooler/job_record.h"
#include "tests/spooler/private_spooler.h"
#include "tests/spooler/socket_printer.h"
#include "tests/spooler/zpl_stream.h"

namespace kelp_test {

// A spooler with a label queue and a stencil queue, each with a printer of its own. After a test
// none of the spooler's programs may be left; when a test failed, the log says what happened.
class SpoolerTest : public testing::Test {
  protected:
    SpoolerTest();
    void TearDown() override;

    // The PPD of one of the models, "label-4inch" and the like.
    static std::filesystem::path ppd_of(const std::string& model);

    // A path for a file of the test.
    std::filesystem::path file(const std::string& name) const {
        return spooler.folders().extras() / name;
    }
    // Makes a document for one of the queues and returns its path.
    std::string document(const std::string& name, Format format, const Sheet& sheet,
                         const std::string& postscript, int dots_per_inch = 203) const;

    struct Printed {
        int job = 0;
        JobRecord record;
        std::string bytes;
        std::vector<PrintedLabel> labels() const { return read_labels(bytes); }
    };
    // Prints with the arguments of lp, waits for the end, and expects that the job is completed and
    // that the queue's printer got one connection more.
    Printed print_unchecked(const std::string& queue, const std::vector<std::string>& arguments);
    // Expects besides that the bytes are those that the filter makes of the job's raster.
    Printed print(const std::string& queue, const std::vector<std::string>& arguments);
    Printed print_on_label(const std::vector<std::string>& arguments) {
        return print("label", arguments);
    }

    // Expects that the queue takes jobs and is not stopped, and prints one to show it.
    void expect_ready(const std::string& queue);

    void expect_completed(int job) const;

    static constexpr Sheet label_sheet{288, 432};    // 4 x 6 inch
    static constexpr Sheet stencil_sheet{420, 595};  // A5

    SocketPrinter label_printer;
    SocketPrinter stencil_printer;
    PrivateSpooler spooler;

  private:
    SocketPrinter& printer_of(const std::string& queue) {
        return queue == "stencil" ? stencil_printer : label_printer;
    }
};

}  // namespace kelp_test
