// Someone else may have put something where the filter writes its fixed files: it is never
// followed, never waited for and never changed, and the job goes on without that file.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ostream>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

namespace fs = std::filesystem;

enum class Place { debug_line, origin, dithered, recording };
enum class Plant { link, dangling_link, link_to_fifo, fifo, fifo_with_reader, folder, device };

constexpr std::array place_names{"DebugLine", "OriginSnapshot", "DitheredSnapshot", "Recording"};
constexpr std::array plant_names{"Link",           "DanglingLink", "LinkToFifo",  "Fifo",
                                 "FifoWithReader", "Folder",       "LinkToDevice"};

const std::string recording_name = "rec-20240305070809.bin";
const std::string precious = "not to be touched";

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
            case Plant::device:
                fs::create_symlink("/dev/null", place());
                break;
        }
        planted_ = fs::symlink_status(place()).type();
    }

    void expect_untouched() {
        EXPECT_EQ(fs::symlink_status(place()).type(), planted_);
        if (std::get<1>(GetParam()) == Plant::link) {
            EXPECT_EQ(read_file(target()), precious);
        }
        if (std::get<1>(GetParam()) == Plant::dangling_link) {
            EXPECT_FALSE(fs::exists(target()));
        }
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
    fs::file_type planted_{};
};

TEST_P(PlantedFile, IsLeftAloneAndTheJobGoesOn) {
    plant();
    Job job = job_of({tiny_page()});
    job.ppd = bare_ppd()
                  .option("RecordPrinterCommands", {"1"})
                  .attribute("kelpFilterOutputFile", "rec")
                  .text();
    Command command = sandbox_.command(job);
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

    // Everything that was not planted is there.
    const Place at = std::get<0>(GetParam());
    EXPECT_EQ(result.snapshots.size(), at == Place::origin || at == Place::dithered ? 1U : 2U);
    EXPECT_EQ(result.debug_line.has_value(), at != Place::debug_line);
    if (at != Place::recording) {
        EXPECT_EQ(result.recordings,
                  (std::map<std::string, std::string>{{recording_name, output}}));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Everywhere, PlantedFile,
    testing::Combine(
        testing::Values(Place::debug_line, Place::origin, Place::dithered, Place::recording),
        testing::Values(Plant::link, Plant::dangling_link, Plant::link_to_fifo, Plant::fifo,
                        Plant::fifo_with_reader, Plant::folder, Plant::device)),
    [](const testing::TestParamInfo<PlantedFile::ParamType>& of) {
        return std::string(place_names[static_cast<std::size_t>(std::get<0>(of.param))]) +
               plant_names[static_cast<std::size_t>(std::get<1>(of.param))];
    });

}  // namespace
}  // namespace kelp_test
