// The standard's own tests, as cups-ipp-utils has them.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/app/app_test.h"

namespace kelp_test {
namespace {

class AppStandards : public AppTest {
  protected:
    AppStandards() { add_printer("label-4inch"); }

    // What a test file expected and did not get, a line each.
    std::vector<std::string> missed(const std::string& test) {
        // It is tested that the printer is up for a second at least.
        EXPECT_TRUE(wait_until([&] { return printer().attribute("printer-up-time") != "0"; }));
        Command command;
        command.program = KELP_IPPTOOL;
        command.arguments = {
            "-tIf", KELP_TEST_PICTURE,
            "ipp://localhost:" + std::to_string(application.port()) + "/ipp/print/labels",
            std::string(KELP_CUPS_DATADIR) + "/ipptool/" + test};
        command.environment = {{"PATH", "/usr/bin:/bin"}, {"HOME", application.file("").string()}};
        const ProcessResult result = run_process(command);
        EXPECT_TRUE(result.exit_status.has_value()) << result.ending();
        EXPECT_NE(result.output.find("[PASS]"), std::string::npos) << result.output;

        std::vector<std::string> lines;
        std::istringstream output(result.output);
        for (std::string line; std::getline(output, line);) {
            const std::size_t expected = line.find("EXPECTED: ");
            if (expected != std::string::npos) {
                lines.push_back(line.substr(expected + 10));
            }
        }
        EXPECT_EQ(result.exit_status == 0, lines.empty()) << result.output;
        return lines;
    }
};

using Lines = std::vector<std::string>;

TEST_F(AppStandards, Ipp11Passes) {
    EXPECT_EQ(missed("ipp-1.1.test"), Lines());
}

TEST_F(AppStandards, Ipp20Passes) {
    EXPECT_EQ(missed("ipp-2.0.test"), Lines());
}

TEST_F(AppStandards, IppEverywherePassesButForWhatTheFrameworkHasNot) {
    // Settings for single pages.
    EXPECT_EQ(missed("ipp-everywhere.test"), (Lines{"overrides-supported", "overrides-supported"}));
}

}  // namespace
}  // namespace kelp_test
