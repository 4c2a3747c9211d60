#pragma once

#include <string>
#include <vector>

#include "tests/process/sandbox.h"

namespace kelp_test {

// Small jobs of two pages that between them run all of the filter's code.
struct FaultJob {
    const char* name;
    const char* options;
    bool packed = false;  // the raster is compressed, which libcups takes more memory for

    std::vector<Page> pages() const;
    Job job() const;
};

// Of the default route, the tattoo route, with a recording, from a compressed raster.
const std::vector<FaultJob>& fault_jobs();

// The name of their recordings.
inline const std::string recording = "rec-20240305070809.bin";

// What a job sends, in the pieces that stand or fall as a whole.
struct SentPage {
    std::string setup;
    std::string graphic;
};
struct SentJob {
    std::string preamble;
    std::vector<SentPage> pages;

    std::string whole() const;
};

// Takes the undisturbed output of a job of two pages apart.
SentJob sent_job(const std::string& output);

// How often the part is there.
std::size_t count_of(const std::string& text, std::string_view part);

}  // namespace kelp_test
