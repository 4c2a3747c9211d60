#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_SHOWN_JOB_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_SHOWN_JOB_H

#include <cstdint>
#include <string>
#include <vector>

#include "tools/kelp-preview/listen/job_files.h"

namespace kelp_listen {

struct ShownLabel {
    std::uint64_t width = 0;   ///< dots
    std::uint64_t height = 0;  ///< dots
    double blackShare = 0;     ///< 0 to 1
    std::string text;          ///< its description, lines
    std::string picture;       ///< the file in the job's folder
};

/// A job that was stored.
struct ShownJob {
    std::uint64_t number = 0;
    std::string sender;  ///< its address
    std::string time;    ///< when it was stored, "2026-11-21 09:30:00"
    std::uint64_t bytes = 0;
    std::vector<ShownLabel> labels;
    std::vector<std::string> notes;  ///< what is not right with the job itself, a line each
    std::string rest;                ///< what was found behind the last label, lines
    std::uint64_t warnings = 0;      ///< notes and those of the labels and behind them
    JobFiles files;

    /// "2 labels, 1 warning"
    std::string summary() const;
};

}  // namespace kelp_listen

#endif
