#pragma once

#include <cstdlib>
#include <cstring>
#include <string>

#include "filter/settings.h"
#include "tests/support/files.h"
#include "tests/support/ppd_file.h"
#include "tests/support/temp_dir.h"
#include "tests/unit/printer/support/stderr_capture.h"

namespace kelp_test {

// A job on the printer of a description, whose settings are read.
class SettingsJob {
  public:
    SettingsJob() { unsetenv("PPD"); }
    ~SettingsJob() { unsetenv("PPD"); }
    SettingsJob(const SettingsJob&) = delete;
    SettingsJob& operator=(const SettingsJob&) = delete;

    void use(const Ppd& description) { use_text(description.text()); }
    void use_text(const std::string& description) {
        write_file(directory_ / "printer.ppd", description);
        use_path((directory_ / "printer.ppd").string());
    }
    static void use_path(const std::string& path) { setenv("PPD", path.c_str(), 1); }

    // The record is full of other bytes before it is read.
    const Settings& read(const char* options) {
        std::memset(static_cast<void*>(&settings), 0x5A, sizeof settings);
        log = stderr_of([&] { parseSettings(settings, options); });
        return settings;
    }
    // That the log has a line.
    bool logged(const std::string& line) const {
        return ("\n" + log).find("\nDEBUG:" + line + "\n") != std::string::npos;
    }

    Settings settings;
    std::string log;

  private:
    const TempDir directory_;
};

}  // namespace kelp_test
