#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_DRAWING_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_JOB_DRAWING_H

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "preview/stream_decoder.h"
#include "tools/kelp-preview/listen/listen_options.h"
#include "tools/kelp-preview/listen/shown_job.h"
#include "tools/kelp-preview/listen/unfinished_job.h"

namespace kelp_listen {

/// Draws a job's labels into its folder, one at a time so that others get their turn between them.
/// Whatever is wrong becomes a note of the job.
class JobDrawing {
  public:
    /// @param files its stream is ended; borrowed
    /// @param remark on how the job came, or empty
    JobDrawing(UnfinishedJob& files, const std::string& remark, const DrawingLimits& limits);

    /// @return whether there may be another label
    bool drawNext();
    /// What was drawn, without the job's number, sender, time and files.
    ShownJob take() { return std::move(job_); }

  private:
    void note(const std::string& text);
    bool drawLabel();
    void add(kelp_preview::Label label);
    std::string withinBudget(std::string text);

    UnfinishedJob& files_;
    DrawingLimits limits_;
    std::uint64_t dotsLeft_;
    std::size_t textLeft_;
    std::filebuf stream_;
    std::unique_ptr<kelp_preview::StreamDecoder> decoder_;
    ShownJob job_;
};

}  // namespace kelp_listen

#endif
