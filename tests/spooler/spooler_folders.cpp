#include "tests/spooler/spooler_folders.h"

#include <unistd.h>

#include <stdexcept>
#include <string>

#include "tests/process/sandbox.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t longest_socket_path = 107;

bool is_root() {
    return geteuid() == 0;
}

void make_folder(const fs::path& path, fs::perms permissions) {
    fs::create_directories(path);
    fs::permissions(path, permissions);
}

constexpr fs::perms readable = static_cast<fs::perms>(0755);
constexpr fs::perms writable_by_all = static_cast<fs::perms>(01777);

void copy_program(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
    fs::permissions(to, readable);
}

// The machine's programs that take a document to raster, and what the daemon itself runs.
void link_programs(const fs::path& programs) {
    const fs::path system = KELP_CUPS_SERVERBIN;
    for (const char* name :
         {"filter/gstopdf", "filter/gstoraster", "filter/gziptoany", "filter/imagetopdf",
          "filter/imagetoraster", "filter/pdftopdf", "filter/pdftops", "filter/pstops",
          "filter/rastertopwg", "filter/texttopdf", "filter/texttotext", "backend/ipp",
          "backend/socket", "daemon/cups-driverd", "daemon/cups-exec"}) {
        fs::create_directories((programs / name).parent_path());
        fs::create_symlink(system / name, programs / name);
    }
}

void link_data(const fs::path& data) {
    const fs::path system = KELP_CUPS_DATADIR;
    for (const char* name : {"banners", "charsets", "data", "profiles", "usb"}) {
        if (fs::exists(system / name)) {
            fs::create_symlink(system / name, data / name);
        }
    }
    fs::create_directories(data / "mime");
    for (const fs::directory_entry& entry : fs::directory_iterator(system / "mime")) {
        // The rules under test are those of the source tree, also where the package is installed.
        if (entry.path().stem() != "kelp") {
            fs::create_symlink(entry.path(), data / "mime" / entry.path().filename());
        }
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(KELP_MIME_DIR)) {
        copy_program(entry.path(), data / "mime" / entry.path().filename());
        fs::permissions(data / "mime" / entry.path().filename(), static_cast<fs::perms>(0644));
    }
}

void install_filters(const fs::path& programs) {
    copy_program(KELP_TEST_WORLD_LIBRARY, programs / "world.so");
    copy_program(filter_program(), programs / "rastertokelp");
    copy_program(KELP_FITTER, programs / "rastertokelpraster");
    copy_program(KELP_FILTER_STAND_IN, programs / "filter/rastertokelp");
    copy_program(KELP_FILTER_STAND_IN, programs / "filter/rastertokelpraster");
}

std::string files_configuration(const SpoolerFolders& folders) {
    const std::string root = folders.root().string();
    return std::string(is_root() ? "User lp\nGroup lp\n" : "") + "ServerRoot " + root +
           "/etc\nServerBin " + root + "/programs\nDataDir " + root + "/data\nRequestRoot " + root +
           "/spool\nTempDir " + root + "/spool/tmp\nCacheDir " + root + "/cache\nStateDir " + root +
           "/state\nAccessLog " + root + "/log/access_log\nPageLog " + root +
           "/log/page_log\nErrorLog " + folders.error_log().string() + "\n";
}

// No printer is looked for, nothing is announced, nobody has to sign in.
std::string configuration(const SpoolerFolders& folders) {
    return "Listen " + folders.socket().string() + R"(
LogLevel debug
MaxLogSize 0
WebInterface No
Browsing No
DefaultAuthType None
JobKillDelay 2
JobRetryInterval 1
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
)";
}

}  // namespace

SpoolerFolders::SpoolerFolders() {
    if (socket().string().size() > longest_socket_path) {
        throw std::runtime_error("too long for the path of a socket: " + socket().string());
    }
    fs::permissions(root(), readable);
    for (const char* name : {"cache", "client", "data", "etc", "log", "programs", "spool", "state",
                             "programs/filter", "world/var/spool/cups"}) {
        make_folder(root() / name, readable);
    }
    for (const char* name :
         {"extras", "records", "spool/tmp", "world/tmp", "world/var/spool/cups/tmp"}) {
        make_folder(root() / name, writable_by_all);
    }
    copy_program(KELP_CUPSD, daemon());
    link_programs(root() / "programs");
    link_data(root() / "data");
    install_filters(root() / "programs");
    write_file(files_configuration(), kelp_test::files_configuration(*this));
    write_file(configuration(), kelp_test::configuration(*this));
}

}  // namespace kelp_test
