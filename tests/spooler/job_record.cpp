#include "tests/spooler/job_record.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace kelp_test {
namespace {

std::vector<std::string> split_at_nul(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\0', start)) != std::string::npos; start = end + 1) {
        parts.push_back(text.substr(start, end - start));
    }
    return parts;
}

std::filesystem::path folder_of(const std::filesystem::path& records, int job) {
    return records / std::to_string(job);
}

// A file in memory, read from its start.
Descriptor memory_file(const std::string& content) {
    Descriptor file(memfd_create("raster", MFD_CLOEXEC));
    if (!file.is_open() ||
        write(file.get(), content.data(), content.size()) != static_cast<ssize_t>(content.size())) {
        throw std::runtime_error("no memory for a raster");
    }
    lseek(file.get(), 0, SEEK_SET);
    return file;
}

struct CloseRaster {
    void operator()(cups_raster_t* raster) const { cupsRasterClose(raster); }
};

std::string difference(const std::string& received, const std::string& expected) {
    const auto [end, expected_end] =
        std::mismatch(received.begin(), received.end(), expected.begin(), expected.end());
    const auto at = static_cast<std::size_t>(end - received.begin());
    const std::size_t from = at < 60 ? 0 : at - 60;
    return "they part at byte " + std::to_string(at) + " of " + std::to_string(received.size()) +
           " and " + std::to_string(expected.size()) +
           "\nreceived: " + testing::PrintToString(received.substr(from, 120)) +
           "\nexpected: " + testing::PrintToString(expected.substr(from, 120));
}

}  // namespace

unsigned char GivenPage::at(unsigned x, unsigned y) const {
    return static_cast<unsigned char>(pixels.at(std::size_t{y} * header.cupsBytesPerLine + x));
}

std::vector<GivenPage> JobRecord::pages() const {
    const Descriptor file = memory_file(raster);
    const std::unique_ptr<cups_raster_t, CloseRaster> stream(
        cupsRasterOpen(file.get(), CUPS_RASTER_READ));
    std::vector<GivenPage> result;
    GivenPage page;
    while (stream && cupsRasterReadHeader2(stream.get(), &page.header) != 0) {
        page.pixels.resize(std::size_t{page.header.cupsBytesPerLine} * page.header.cupsHeight);
        cupsRasterReadPixels(stream.get(), reinterpret_cast<unsigned char*>(page.pixels.data()),
                             static_cast<unsigned>(page.pixels.size()));
        result.push_back(page);
    }
    return result;
}

bool has_record(const std::filesystem::path& records, int job) {
    return std::filesystem::exists(folder_of(records, job) / "raster");
}

JobRecord read_record(const std::filesystem::path& records, int job) {
    const std::filesystem::path folder = folder_of(records, job);
    return {split_at_nul(read_file(folder / "arguments")), read_file(folder / "printer.ppd"),
            read_file(folder / "raster")};
}

JobResult run_again(const JobRecord& record, const std::filesystem::path& program) {
    Job job;
    job.ppd = record.ppd;
    job.raster = record.raster;
    const Sandbox sandbox;
    Command command = sandbox.command(job, program);
    // A sixth argument would name the same raster.
    command.arguments.assign(record.arguments.begin(), record.arguments.begin() + 5);
    // libcups leaks when a spooler's "print-color-mode" stands for a driver's preset.
    for (const char* sanitizer : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        command.environment[sanitizer] += ":detect_leaks=0";
    }
    return sandbox.run(command);
}

void expect_made_from(const JobRecord& record, const std::string& bytes) {
    for (const std::filesystem::path& program :
         {filter_program(), std::filesystem::path(KELP_REFERENCE_JOB)}) {
        const JobResult again = run_again(record, program);
        EXPECT_EQ(again.exit_status, 0) << program << "\n" << again.error;
        EXPECT_TRUE(bytes == again.output) << program << "\n" << difference(bytes, again.output);
    }
}

}  // namespace kelp_test
