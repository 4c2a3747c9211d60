// What it says at its start, and what keeps it from starting.

#include <filesystem>

#include "tests/preview/listen/http.h"
#include "tests/preview/listen/listen_test.h"
#include "tests/support/files.h"
#include "tests/support/run_process.h"

namespace kelp_test {
namespace {

class ListenStart : public ListenTest {
  protected:
    ProcessResult run(const std::vector<std::string>& arguments) {
        Command command;
        command.program = KELP_PREVIEW;
        command.arguments = {"listen"};
        command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
        command.working_directory = dir.path();
        return run_process(command);
    }
    // Expects that it does not start and says why in this line.
    void expect_refusal(const std::vector<std::string>& arguments, const std::string& line) {
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exit_status, 1) << result.ending();
        EXPECT_EQ(result.error, "kelp-preview: " + line + "\n");
        EXPECT_EQ(result.output, "");
    }
};

TEST_F(ListenStart, SaysWhereItListensInAFixedForm) {
    start();
    EXPECT_EQ(listener().error(),
              (Names{"Listening on 127.0.0.1:" + std::to_string(listener().port()),
                     "Web page: http://127.0.0.1:" + std::to_string(listener().web_port()) + "/",
                     "Jobs are stored in jobs"}));
}

TEST_F(ListenStart, ListensOnIpv6) {
    start({"--address", "::1", "--web-address", "::1"});
    EXPECT_EQ(listener().error().at(0), "Listening on [::1]:" + std::to_string(listener().port()));
    EXPECT_EQ(listener().error().at(1),
              "Web page: http://[::1]:" + std::to_string(listener().web_port()) + "/");
    print_job(listener().port(), one, "::1");
    EXPECT_NE(listener().output().at(0).find(" bytes from ::1 in "), std::string::npos);
    const std::string request = "GET / HTTP/1.1\r\nConnection: close\r\nHost: ";
    EXPECT_EQ(http(listener().web_port(), request + "[::1]\r\n\r\n", "::1").status, 200);
    EXPECT_EQ(http(listener().web_port(), request + "evil.example\r\n\r\n", "::1").status, 421);
}

TEST_F(ListenStart, RefusesAPortInUse) {
    start();
    for (const std::string& port :
         {std::to_string(listener().port()), std::to_string(listener().web_port())}) {
        const std::string line = "127.0.0.1:" + port + ": Address already in use";
        expect_refusal({"--port", port, "--web-port", "0", "-o", "other"}, line);
        expect_refusal({"--port", "0", "--web-port", port, "-o", "other"}, line);
    }
    print(one);
    EXPECT_EQ(names_in(dir / "other"), Names{});
}

TEST_F(ListenStart, RefusesWhatIsNoAddress) {
    for (const char* address : {"fred", "1.2.3.4.5", "::g", "localhost", "127.0.0.1:80"}) {
        expect_refusal({"--address", address, "--port", "0", "--web-port", "0"},
                       std::string("no IP address: ") + address);
        expect_refusal({"--web-address", address, "--port", "0", "--web-port", "0"},
                       std::string("no IP address: ") + address);
    }
    // of a network for documents only
    expect_refusal({"--address", "192.0.2.1", "--port", "9100", "--web-port", "0"},
                   "192.0.2.1:9100: Cannot assign requested address");
}

TEST_F(ListenStart, RefusesAFolderThatCannotBeWritten) {
    write_file(dir / "file", "");
    expect_refusal({"-o", "file", "--port", "0", "--web-port", "0"}, "file: Not a directory");
    expect_refusal({"-o", "missing/jobs", "--port", "0", "--web-port", "0"},
                   "missing/jobs: No such file or directory");
    std::filesystem::create_symlink("nowhere", dir / "link");
    EXPECT_EQ(run({"-o", "link", "--port", "0", "--web-port", "0"}).exit_status, 1);
    // nobody can make a folder there, not even root
    EXPECT_EQ(run({"-o", "/proc", "--port", "0", "--web-port", "0"}).exit_status, 1);
    EXPECT_EQ(names_in(dir.path()), (Names{"file", "link"}));
}

TEST_F(ListenStart, RefusesLimitsThatAreNone) {
    for (const char* option : {"--max-connections", "--max-job-size", "--idle-time", "--max-dots",
                               "--max-labels", "--keep"}) {
        for (const char* value : {"0", "-1", "x", "", "99999999999999999999"}) {
            const ProcessResult result = run({option, value, "--port", "0", "--web-port", "0"});
            EXPECT_EQ(result.exit_status, 1) << option << " " << value;
            EXPECT_NE(result.error.find(option), std::string::npos) << result.error;
        }
    }
    for (const char* option : {"--port", "--web-port"}) {
        for (const char* value : {"65536", "-1", "x"}) {
            EXPECT_EQ(run({option, value}).exit_status, 1) << option << " " << value;
        }
    }
    EXPECT_EQ(names_in(dir.path()), Names{});
}

TEST_F(ListenStart, HelpsWithEveryLimitAndItsDefault) {
    const ProcessResult help = run({"--help"});
    EXPECT_EQ(help.exit_status, 0);
    for (const char* text :
         {"--address IP=127.0.0.1", "--port N", "=9100", "--web-address IP=127.0.0.1", "--web-port",
          "=9180", "--output DIR=kelp-jobs", "--max-connections N", "=16", "--max-job-size BYTES",
          "=67108864", "--idle-time SECONDS", "=60", "--max-dots N", "=200000000", "--max-labels N",
          "=1000", "--keep N", "=100"}) {
        EXPECT_NE(help.output.find(text), std::string::npos) << text << "\n" << help.output;
    }
}

}  // namespace
}  // namespace kelp_test
