#include "app/server.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "app/driver.h"
#include "app/heartbeat.h"
#include "app/job_callbacks.h"
#include "app/job_log.h"
#include "app/label_web_page.h"
#include "app/pdf_filter.h"
#include "app/picture_filter.h"
#include "app/printer_status.h"
#include "app/program_name.h"
#include "app/saved_state.h"
#include "app/socket_device.h"
#include "app/state_folder.h"
#include "app/supplies.h"
#include "app/test_label.h"
#include "app/translations.h"
#include "filter/version.h"

namespace kelp_app {

namespace {

constexpr int kMostJobs = 100;    // that wait at a printer
constexpr int kMostClients = 64;  // at a time
constexpr std::size_t kMostLogBytes = std::size_t{1} << 20U;

/// The options of the command line.
class ServerOptions {
  public:
    ServerOptions(int count, cups_option_t* options) : count_(count), options_(options) {}
    /// Null where it is not given.
    const char* text(const char* name) const { return cupsGetOption(name, count_, options_); }
    /// Whether it is the value, and not another or none.
    bool is(const char* name, std::string_view value) const {
        const char* given = text(name);
        return given != nullptr && given == value;
    }

  private:
    int count_;
    cups_option_t* options_;
};

pappl_system_t* refuse(const std::string& message) {
    std::fprintf(stderr, "%s: %s\n", kProgramName, message.c_str());
    return nullptr;
}

/// -1 for a text that is no port.
int portOf(const char* text) {
    if (text == nullptr) {
        return 0;
    }
    int port = 0;
    const char* end = text + std::strlen(text);
    const auto [stopped, error] = std::from_chars(text, end, port);
    return error == std::errc() && stopped == end && port > 0 && port < 65536 ? port : -1;
}

pappl_loglevel_t levelOf(const char* text) {
    constexpr const char* kLevels[] = {"debug", "info", "warn", "error", "fatal"};
    for (int level = PAPPL_LOGLEVEL_DEBUG; text != nullptr && level <= PAPPL_LOGLEVEL_FATAL;
         ++level) {
        if (std::strcmp(text, kLevels[level]) == 0) {
            return static_cast<pappl_loglevel_t>(level);
        }
    }
    return PAPPL_LOGLEVEL_WARN;
}

/// Empty where there is none.
std::string firstLineOf(const char* path) {
    std::string line;
    std::ifstream file(path);
    std::getline(file, line);
    return line;
}

void preparePrinter(pappl_printer_t* printer, void* /*unused*/) {
    useOwnSocket(printer);
    addLabelPage(printer);
    describeSupplies(printer);
    papplPrinterSetMaxActiveJobs(printer, kMostJobs);
}

}  // namespace

pappl_system_t* makeServer(int optionCount, cups_option_t* givenOptions, void* /*unused*/) {
    const ServerOptions options(optionCount, givenOptions);
    const int port = portOf(options.text("server-port"));
    if (port < 0) {
        return refuse("The server-port must be a number from 1 to 65535.");
    }
    const bool isShared = options.is("share", "yes");
    std::string password;
    if (const char* file = options.text("password-file")) {
        password = firstLineOf(file);
        if (password.empty()) {
            return refuse("The password-file \"" + std::string(file) + "\" holds no password.");
        }
    } else if (isShared) {
        return refuse(
            "share=yes opens the printers to the network: it needs a password-file=FILE.");
    }

    std::filesystem::path folder;
    try {
        folder = stateFolder(options.text("state-directory"));
    } catch (const std::runtime_error& error) {
        return refuse(error.what());
    }

    pappl_soptions_t features = PAPPL_SOPTIONS_MULTI_QUEUE | PAPPL_SOPTIONS_WEB_INTERFACE;
    if (!isShared) {
        features |= PAPPL_SOPTIONS_NO_TLS;  // nothing leaves the machine
    } else {
        features |=
            PAPPL_SOPTIONS_WEB_REMOTE | PAPPL_SOPTIONS_WEB_SECURITY | PAPPL_SOPTIONS_WEB_TLS;
    }
    pappl_system_t* system = papplSystemCreate(
        features, kProgramName, port, "_print,_universal", (folder / "spool").c_str(),
        options.text("log-file"), levelOf(options.text("log-level")), options.text("auth-service"),
        /*tls_only=*/false);
    if (system == nullptr) {
        return nullptr;
    }
    if (const char* name = options.text("server-hostname")) {
        papplSystemSetHostName(system, name);
    }
    // The framework takes no page without one.
    papplSystemSetFooterHTML(system, "Kelp " KELP_VERSION);
    papplSystemSetMaxClients(system, kMostClients);
    papplSystemSetMaxLogSize(system, kMostLogBytes);
    papplSystemSetMIMECallback(system, recognizeCommands, nullptr);
    askPrinters(!options.is("status-query", "no"));
    addSocketDevices();
    addRasterFilters(system);
    addPictureFilters(system);
    addPdfFilter(system);
    addTranslations(system);
    addTestLabelFilter(system, folder / "spool");

    static std::vector<pappl_pr_driver_t> drivers = driverList();
    papplSystemSetPrinterDrivers(system, static_cast<int>(drivers.size()), drivers.data(),
                                 recognizeDevice, preparePrinter, describePrinter, nullptr);
    takeCoreLog();
    if (!papplSystemAddListeners(system, isShared ? nullptr : "localhost")) {
        papplSystemDelete(system);
        return refuse("Unable to listen on the port.");
    }
    try {
        keepState(system, folder);
    } catch (const std::system_error& error) {
        papplSystemDelete(system);
        return refuse(error.what());
    }
    keepBeating(system);
    // What the command line says goes before what was saved.
    if (const char* group = options.text("admin-group")) {
        papplSystemSetAdminGroup(system, group);
    }
    if (!password.empty()) {
        char hash[256];
        papplSystemHashPassword(system, nullptr, password.c_str(), hash, sizeof hash);
        papplSystemSetPassword(system, hash);
    }
    return system;
}

}  // namespace kelp_app
