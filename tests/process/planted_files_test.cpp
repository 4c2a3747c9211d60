// Someone else may have put something where the filter writes its fixed files: it is never
// followed, never waited for and never changed, and the job goes on without that file.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <iterator>
#include <ostream>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

enum class Place { debug_line, origin, dithered, recording };
enum class Plant {
    link,
    dangling_link,
    link_to_fifo,
    link_to_folder,
    hard_link,
    fifo,
    fifo_with_reader,
    folder,
    socket,
    link_to_device,
    device
};

constexpr std::array place_names{"DebugLine", "OriginSnapshot", "DitheredSnapshot", "Recording"};
constexpr std::array plant_names{"Link",     "DanglingLink", "LinkToFifo",     "LinkToFolder",
                                 "HardLink", "Fifo",         "FifoWithReader", "Folder",
                                 "Socket",   "LinkToDevice", "Device"};

const std::string recording_name = "rec-20240305070809.bin";
const std::string precious = "not to be touched";

// Writes at every path that is written.
Job recording_job() {
    Job job = job_of({tiny_page()});
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    return job;
}

class PlantedFile : public testing::TestWithParam<std::tuple<Place, Plant>> {
  protected:
    fs::path place() const {
        switch (std::get<0>(GetParam())) {
            case Place::debug_line:
                return sandbox_.debug_log();
            case Place::origin:
                return sandbox_.spool() / "origin_2024-3-5_7_8_9_0.bmp";
            case Place::dithered:
                return sandbox_.spool() / "dithered_2024-3-5_7_8_9_1.bmp";
            case Place::recording:
                break;
        }
        return sandbox_.working_directory() / recording_name;
    }

    fs::path target() const { return sandbox_.extras() / "target"; }

    void make_fifo(const fs::path& path) { ASSERT_EQ(mkfifo(path.c_str(), 0666), 0) << path; }

    void plant() {
        switch (std::get<1>(GetParam())) {
            case Plant::link:
                write_file(target(), precious);
                fs::create_symlink(target(), place());
                break;
            case Plant::dangling_link:
                fs::create_symlink(target(), place());
                break;
            case Plant::link_to_fifo:
                make_fifo(target());
                fs::create_symlink(target(), place());
                break;
            case Plant::link_to_folder:
                fs::create_directory(target());
                fs::create_symlink(target(), place());
                break;
            case Plant::hard_link:
                write_file(target(), precious);
                fs::create_hard_link(target(), place());
                break;
            case Plant::fifo:
                make_fifo(place());
                break;
            case Plant::fifo_with_reader:
                make_fifo(place());
                reader_ = Descriptor(open(place().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
                ASSERT_TRUE(reader_.is_open());
                break;
            case Plant::folder:
                fs::create_directory(place());
                break;
            case Plant::socket:
                make_socket();
                break;
            case Plant::link_to_device:
                fs::create_symlink("/dev/null", place());
                break;
            case Plant::device:
                // One that takes everything, of the test's own.
                if (mknod(place().c_str(), S_IFCHR | 0666, makedev(1, 3)) != 0) {
                    GTEST_SKIP() << "a device can be made by root only";
                }
                break;
        }
        before_ = tree();
    }

    // Bound from within its folder: the whole path is longer than a socket's name can be.
    void make_socket() {
        const Descriptor folder(open(place().parent_path().c_str(), O_PATH | O_CLOEXEC));
        const Descriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string name =
            "/proc/self/fd/" + std::to_string(folder.get()) + "/" + place().filename().string();
        ASSERT_LT(name.size(), sizeof address.sun_path);
        name.copy(address.sun_path, name.size());
        ASSERT_EQ(bind(made.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }

    // Everything that the job must leave as it is: what was planted, and all that is not its own.
    std::map<std::string, std::string> tree() const {
        std::map<std::string, std::string> result;
        const auto add = [&](const fs::path& path) {
            struct stat status {};
            ASSERT_EQ(lstat(path.c_str(), &status), 0) << path;
            std::string& entry = result[path];
            for (const auto number : {std::uint64_t{status.st_ino}, std::uint64_t{status.st_mode},
                                      std::uint64_t{status.st_nlink}, std::uint64_t{status.st_rdev},
                                      std::uint64_t{status.st_uid}, std::uint64_t{status.st_gid}}) {
                entry += std::to_string(number) + " ";
            }
            // Reading a file changes no time but that of access.
            entry += std::to_string(status.st_mtim.tv_sec) + "." +
                     std::to_string(status.st_mtim.tv_nsec) + " ";
            if (S_ISREG(status.st_mode)) {
                entry += read_file(path);
            } else if (S_ISLNK(status.st_mode)) {
                entry += fs::read_symlink(path);
            } else if (S_ISDIR(status.st_mode)) {
                entry += std::to_string(std::distance(fs::directory_iterator(path), {})) + " files";
            }
        };
        add(place());
        add(sandbox_.extras());
        for (const fs::directory_entry& file :
             fs::recursive_directory_iterator(sandbox_.extras())) {
            add(file.path());
        }
        return result;
    }

    void expect_untouched() {
        EXPECT_EQ(tree(), before_);
        if (reader_.is_open()) {
            char byte = 0;
            EXPECT_EQ(read(reader_.get(), &byte, 1), 0) << "something was written into the FIFO";
        }
    }

    // The message about the planted snapshot, and none when something else was planted.
    std::vector<std::string> expected_messages() const {
        const Place at = std::get<0>(GetParam());
        if (at != Place::origin && at != Place::dithered) {
            return {};
        }
        return {"KelpPrinter::saveImage: unable to open the file /var/spool/cups/tmp/" +
                place().filename().string()};
    }

    Sandbox sandbox_;
    Descriptor reader_;
    std::map<std::string, std::string> before_;
};

TEST_P(PlantedFile, IsLeftAloneAndTheJobGoesOn) {
    plant();
    if (IsSkipped()) {
        return;
    }
    Command command = sandbox_.command(recording_job());
    command.time_limit = std::chrono::seconds(20);
    const JobResult result = sandbox_.run(command);

    const std::string output = preamble() + tiny_page_output();
    EXPECT_EQ(result.exit_status, 0);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(lines_with(result.error, "ERROR:"), std::vector<std::string>{});
    EXPECT_EQ(lines_with(result.error, "KelpPrinter::"), expected_messages());
    EXPECT_EQ(lines_with(result.error, "DEBUG:Filter data output to: "),
              std::vector<std::string>{"DEBUG:Filter data output to: " + recording_name});
    expect_untouched();

    // Everything that was not planted is there. A hard link is a regular file, but not the job's.
    const Place at = std::get<0>(GetParam());
    const std::size_t planted = std::get<1>(GetParam()) == Plant::hard_link ? 1 : 0;
    EXPECT_EQ(result.snapshots.size(),
              at == Place::origin || at == Place::dithered ? 1 + planted : 2);
    if (at != Place::debug_line) {
        EXPECT_EQ(result.debug_line,
                  "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
    }
    if (at != Place::recording) {
        EXPECT_EQ(result.recordings,
                  (std::map<std::string, std::string>{{recording_name, output}}));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Everywhere, PlantedFile,
    testing::Combine(testing::Values(Place::debug_line, Place::origin, Place::dithered,
                                     Place::recording),
                     testing::Values(Plant::link, Plant::dangling_link, Plant::link_to_fifo,
                                     Plant::link_to_folder, Plant::hard_link, Plant::fifo,
                                     Plant::fifo_with_reader, Plant::folder, Plant::socket,
                                     Plant::link_to_device, Plant::device)),
    [](const testing::TestParamInfo<PlantedFile::ParamType>& of) {
        return std::string(place_names[static_cast<std::size_t>(std::get<0>(of.param))]) +
               plant_names[static_cast<std::size_t>(std::get<1>(of.param))];
    });

// Of an earlier job in the same second, say.
TEST(OlderFiles, AreReplacedByThoseOfTheJob) {
    const Job job = recording_job();
    const Sandbox sandbox;
    const JobResult first = sandbox.run(job);
    for (const auto& [folder, files] : {std::pair{sandbox.spool(), first.snapshots},
                                        {sandbox.working_directory(), first.recordings}}) {
        for (const auto& [name, content] : files) {
            write_file(folder / name, std::string(9999, 'x'));
        }
    }
    write_file(sandbox.debug_log(), std::string(9999, 'x'));

    const JobResult second = sandbox.run(job);
    EXPECT_EQ(lines_with(second.error, "KelpPrinter::"), std::vector<std::string>{});
    EXPECT_EQ(second.snapshots, first.snapshots);
    EXPECT_EQ(second.snapshots.size(), 2U);
    EXPECT_EQ(second.recordings, first.recordings);
    EXPECT_EQ(second.recordings.size(), 1U);
    EXPECT_EQ(second.debug_line,
              "cupsWidth:16, cupsHeight:2, cupsBytesPerLine:16, cupsBitsPerPixel:8\n");
}

}  // namespace
}  // namespace kelp_test
