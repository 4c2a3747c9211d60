#pragma once

#include <filesystem>

#include "tests/support/temp_dir.h"

namespace kelp_test {

// Everything that a spooler of its own needs, in one temporary folder: configuration, programs,
// MIME rules, spool, cache, state and logs. The filters under test are copies of the built ones;
// the others are those of the machine.
//
// Started by root, the spooler runs its filters as the user "lp", and takes only filters that are
// root's; so the folders are open to that user and the copies belong to whoever runs the tests.
class SpoolerFolders {
  public:
    SpoolerFolders();

    std::filesystem::path root() const { return directory_.path(); }
    // A copy: on machines that confine the installed daemon, it could not read these folders.
    std::filesystem::path daemon() const { return root() / "cupsd"; }
    std::filesystem::path files_configuration() const { return root() / "etc/cups-files.conf"; }
    std::filesystem::path configuration() const { return root() / "etc/cupsd.conf"; }
    std::filesystem::path socket() const { return root() / "socket"; }
    std::filesystem::path error_log() const { return root() / "log/error_log"; }
    // What is printed by the daemon itself.
    std::filesystem::path console() const { return root() / "log/console"; }
    // What rastertokelp was given, a folder each job.
    std::filesystem::path records() const { return root() / "records"; }
    // Where the filters find what they open as /tmp/xxxxx.log and below /var/spool/cups/tmp.
    std::filesystem::path world() const { return root() / "world"; }
    // Settings of the person who prints: none.
    std::filesystem::path client_settings() const { return root() / "client"; }
    // A folder for a test's own files, open to the filters.
    std::filesystem::path extras() const { return root() / "extras"; }

  private:
    TempDir directory_;
};

}  // namespace kelp_test
