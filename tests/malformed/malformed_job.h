#pragma once

#include <cups/raster.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <limits>
#include <string>
#include <vector>

#include "tests/process/expected.h"
#include "tests/process/sandbox.h"

namespace kelp_test {

// How a job is spoilt: the command of a good job of one tiny page, changed.
using Spoil = std::function<Command(const Sandbox&)>;

// The largest value of a header's field.
inline constexpr unsigned max = std::numeric_limits<unsigned>::max();

// The length of option strings that nobody would write.
inline constexpr std::size_t large = 100'000;

// One row of a table of malformed jobs.
struct MalformedJob {
    std::string name;
    Spoil make;
    int status;
    // Every line of standard error that is not empty and not a DEBUG line.
    std::string message;
    std::string output;

    friend void PrintTo(const MalformedJob& row, std::ostream* out);
};

// The name of a row as a test's.
template <typename Row>
std::string row_name(const testing::TestParamInfo<Row>& row) {
    return row.param.name;
}

// Runs the row's job, with a second of processor time, and compares all three.
void expect_as_in(const MalformedJob& row);

// A limit of one second of processor time, of more where a sanitizer slows everything down.
ResourceLimit processor_time();

// What a program said that was not for debugging.
std::string complaints(const std::string& log);

// Ways to spoil a job.
Spoil raster(const std::string& stream);
Spoil ppd(const std::string& text);
Spoil ppd_path(const std::string& path);
Spoil options(const std::string& text);
// Made only when the row is run: every test is a process that makes the whole table.
Spoil made_late(const std::function<Spoil()>& make);
// A printer description and options that are about it.
Spoil ppd_with_options(const std::string& text, const std::string& options);
Spoil arguments(const std::vector<std::string>& all);

// A good page, then one with a word of its header changed.
template <typename Field>
Spoil header(Field cups_page_header2_t::*field, unsigned value) {
    RawPage page = raw_page(tiny_page());
    static_assert(sizeof(page.header.*field) == sizeof(value));
    std::memcpy(&(page.header.*field), &value, sizeof(value));
    return raster(raw_raster_stream({raw_page(tiny_page()), page}));
}

// The same with one element of an array.
template <typename Element, std::size_t size>
Spoil header(Element (cups_page_header2_t::*field)[size], std::size_t index, unsigned value) {
    RawPage page = raw_page(tiny_page());
    static_assert(sizeof(Element) == sizeof(value));
    std::memcpy(&(page.header.*field)[index], &value, sizeof(value));
    return raster(raw_raster_stream({raw_page(tiny_page()), page}));
}

}  // namespace kelp_test
