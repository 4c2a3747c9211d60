#ifndef KELP_BENCH_JOB_FILES_H
#define KELP_BENCH_JOB_FILES_H

#include <array>
#include <string>

#include "bench/test_page.h"

/// The choices of the option HalftoneType, by the method that runs; they are named after others.
inline constexpr std::array<const char*, 10> kHalftoneOptions = {
    "None",   "FloydSteinberg", "Ordered", "Burkes",   "Stucki", "JarvisJudiceNinke",
    "Sierra", "StevensonArce",  "Tattoo",  "Tattoo_X8"};

/// A job of so many pages, not packed. Both end this program when they fail.
void writeRaster(const std::string& path, const KnownPage& page, int pages);

/// A PPD with one page size and all halftones.
void writePpd(const std::string& path);

#endif
