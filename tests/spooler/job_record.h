#pragma once

#include <cups/raster.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/process/sandbox.h"

namespace kelp_test {

// A page as rastertokelp was given it.
struct GivenPage {
    cups_page_header2_t header;
    std::string pixels;

    unsigned char at(unsigned x, unsigned y) const;
};

// What the spooler gave rastertokelp for one job.
struct JobRecord {
    std::vector<std::string> arguments;  // without the program's name
    std::string ppd;
    std::string raster;

    std::vector<GivenPage> pages() const;
};

bool has_record(const std::filesystem::path& records, int job);
// Throws std::runtime_error when the job never reached the filter.
JobRecord read_record(const std::filesystem::path& records, int job);

// The same work done again outside of the spooler, by the filter or by the reference.
JobResult run_again(const JobRecord& record, const std::filesystem::path& program);

// Expects that these are the very bytes that the filter, and the reference, make of the record.
void expect_made_from(const JobRecord& record, const std::string& bytes);

}  // namespace kelp_test
