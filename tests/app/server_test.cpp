// The server's own options and promises.

#include <cups/cups.h>
#include <cups/http.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sstream>

#include "tests/app/app_test.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

ProcessResult refused_server(const TempDir& directory, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"server", "-o",
                                          "state-directory=" + (directory / "s").string()};
    for (const std::string& option : options) {
        arguments.insert(arguments.end(), {"-o", option});
    }
    return run_process(application_command(directory.path(), arguments));
}

TEST(AppServer, RefusesAPortThatIsNone) {
    const TempDir directory;
    for (const char* port : {"0", "-1", "65536", "80x", ""}) {
        const ProcessResult result =
            refused_server(directory, {std::string("server-port=") + port});
        EXPECT_EQ(result.exit_status, 1) << port;
        EXPECT_TRUE(result.error.starts_with(
            "kelp-printer-app: The server-port must be a number from 1 to 65535.\n"))
            << result.error;
    }
}

TEST(AppServer, OpensToTheNetworkOnlyWithAPassword) {
    const TempDir directory;
    const ProcessResult none = refused_server(directory, {"share=yes"});
    EXPECT_EQ(none.exit_status, 1);
    EXPECT_NE(none.error.find("it needs a password-file=FILE."), std::string::npos) << none.error;

    write_file(directory / "empty", "\nsecond line\n");
    const ProcessResult empty =
        refused_server(directory, {"share=yes", "password-file=" + (directory / "empty").string()});
    EXPECT_EQ(empty.exit_status, 1);
    EXPECT_NE(empty.error.find("holds no password."), std::string::npos) << empty.error;
}

TEST(AppServer, RefusesAStateFolderThatIsALink) {
    const TempDir directory;
    std::filesystem::create_directory(directory / "elsewhere");
    std::filesystem::create_symlink(directory / "elsewhere", directory / "s");
    const ProcessResult result = refused_server(directory, {"server-port=18631"});
    EXPECT_EQ(result.exit_status, 1);
    EXPECT_NE(result.error.find("Not a folder of this user"), std::string::npos) << result.error;
    EXPECT_TRUE(std::filesystem::is_empty(directory / "elsewhere"));
}

class AppRunning : public AppTest {};

// The addresses that a port of this machine is listened on.
std::vector<std::string> listened_addresses(int port) {
    char hex[8];
    std::snprintf(hex, sizeof hex, ":%04X", static_cast<unsigned>(port));
    std::vector<std::string> addresses;
    for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        std::istringstream lines(std::filesystem::exists(table) ? read_file(table) : "");
        std::string number, local, remote, state, rest;
        while (lines >> number >> local >> remote >> state && std::getline(lines, rest)) {
            if (state == "0A" && local.ends_with(hex)) {
                addresses.push_back(local.substr(0, local.size() - 5));
            }
        }
    }
    return addresses;
}

TEST_F(AppRunning, ListensOnTheLoopbackAlone) {
    const std::vector<std::string> addresses = listened_addresses(application.port());
    EXPECT_FALSE(addresses.empty());
    for (const std::string& address : addresses) {
        EXPECT_TRUE(address == "0100007F" || address == "00000000000000000000000001000000")
            << address;
    }
}

TEST_F(AppRunning, KeepsItsStateToItself) {
    add_printer("label-4inch");
    application.stop();
    struct stat folder {};
    ASSERT_EQ(stat(application.state_folder().c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 07777, 0700U);
    EXPECT_TRUE(std::filesystem::exists(application.state_folder() / "printers.state"));
}

TEST_F(AppRunning, RemembersItsPrinters) {
    add_printer("stencil-a4", "stencils");
    ASSERT_TRUE(wait_until(
        [&] { return std::filesystem::exists(application.state_folder() / "printers.state"); }));
    application.kill_and_restart();
    EXPECT_EQ(printer("stencils").attribute("printer-make-and-model"), "Kelp Stencil Printer A4");
}

TEST_F(AppRunning, GoesOnWhenAPrinterIsDeleted) {
    add_printer("label-4inch", "labels");
    add_printer("label-4inch", "others");
    // Not by the subcommand: the framework (1.3) tells it a number of 0 until the next start.
    ipp_t* question = ippNewRequest(IPP_OP_DELETE_PRINTER);
    ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_URI, "system-uri", nullptr,
                 "ipp://localhost/ipp/system");
    ippAddInteger(question, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "printer-id", 1);
    const Connection http = connect_to(application.port());
    ippDelete(cupsDoRequest(http.get(), question, "/ipp/system"));
    EXPECT_EQ(cupsLastError(), IPP_STATUS_OK) << cupsLastErrorString();
    EXPECT_EQ(application.run({"printers"}).output, "others\n");
    add_printer("label-2inch", "labels");
    EXPECT_EQ(printed("application/vnd.kelp-zpl", "^XA^XZ"), "^XA^XZ");
    EXPECT_EQ(printer("others").attribute("printer-state"), "idle");
}

TEST_F(AppRunning, AFileIsNoPrinter) {
    const std::filesystem::path file = application.file("precious");
    write_file(file, "mine");
    for (const std::string& uri :
         {"file://" + file.string(), std::string("file:///dev/null"), std::string("ipp://x/")}) {
        const ProcessResult added =
            application.run({"add", "-d", "writer", "-m", "kelp-label-4inch", "-v", uri});
        EXPECT_NE(added.exit_status, 0) << uri;
    }
    EXPECT_EQ(application.run({"printers"}).output.find("writer"), std::string::npos);
    EXPECT_EQ(read_file(file), "mine");
    EXPECT_NE(application.log().find("is no printer."), std::string::npos);
}

TEST_F(AppRunning, TellsWhatItsPrintersUseUp) {
    add_printer("label-4inch", "labels");
    add_printer("stencil-a4", "stencils");
    for (const bool is_restarted : {false, true}) {
        if (is_restarted) {
            application.stop();
            application.kill_and_restart();
        }
        EXPECT_EQ(printer("labels").attribute("printer-supply-description"), "Labels");
        EXPECT_EQ(printer("stencils").attribute("printer-supply-description"), "Transfer paper");
        EXPECT_EQ(printer("stencils").attribute("marker-levels"), "-2") << "unknown";
    }
}

std::string password_line(const Application& application) {
    std::istringstream lines(read_file(application.state_folder() / "printers.state"));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("Password ")) {
            return line;
        }
    }
    return "";
}

TEST(AppPassword, IsTheFilesAtEveryStart) {
    const TempDir directory;
    const std::filesystem::path file = directory / "password";
    write_file(file, "first word\n");
    Application application({"password-file=" + file.string()});
    const SocketPrinter device;
    application.add_printer("labels", "kelp-label-4inch", device.device());
    application.stop();
    const std::string first = password_line(application);
    EXPECT_NE(first, "");
    EXPECT_EQ(first.find("first word"), std::string::npos);

    write_file(file, "second word\n");
    application.kill_and_restart();
    application.add_printer("more", "kelp-label-4inch", device.device());
    application.stop();
    const std::string second = password_line(application);
    EXPECT_NE(second, "");
    EXPECT_NE(second, first);
}

TEST_F(AppRunning, ListsTheModels) {
    const ProcessResult listed = application.run({"drivers"});
    EXPECT_EQ(listed.exit_status, 0);
    for (const char* model :
         {"label-2inch", "label-3inch", "label-4inch", "stencil-a5", "stencil-a4"}) {
        EXPECT_NE(listed.output.find(std::string("kelp-") + model + " \"Kelp "), std::string::npos)
            << listed.output;
    }
}

TEST_F(AppRunning, TellsClientsWhatThePrinterHas) {
    add_printer("label-2inch");
    EXPECT_EQ(printer().attribute("media-supported"),
              "oe_2x1-label_2x1in,oe_2-25x1-25-label_2.25x1.25in,om_57x32-label_57x32mm,"
              "om_50x30-label_50x30mm,om_40x30-label_40x30mm,custom_min_9.88x9.88mm,"
              "custom_max_57.15x999.77mm");
    EXPECT_EQ(
        printer().attribute("halftone-supported"),
        "threshold,ordered-4x4,burkes,stucki,jarvis-judice-ninke,sierra,stevenson-arce,bayer");
    EXPECT_EQ(printer().attribute("halftone-default"), "burkes");
    EXPECT_EQ(printer().attribute("brightness-supported"), "-10-10");
    EXPECT_EQ(printer().attribute("label-mode-supported"), "cutter,peel-off,tear-off");
    EXPECT_EQ(printer().attribute("print-speed-supported"), "5080-15240");
    EXPECT_EQ(printer().attribute("negative-supported"), "");
}

}  // namespace
}  // namespace kelp_test
