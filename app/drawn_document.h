#ifndef KELP_APP_DRAWN_DOCUMENT_H
#define KELP_APP_DRAWN_DOCUMENT_H

#include <pappl/pappl.h>

#include <functional>
#include <string>

#include "pictures/document_picture.h"

namespace kelp_app {

/// What ghostscript may take for a page, and to count pages.
constexpr DocumentLimits kDrawingLimits = {std::chrono::minutes(1), std::uint64_t{1} << 30U};

/// Prints pages of a document that ghostscript draws: those that the job asks for. A page is
/// enlarged or reduced to the media unless it nearly has their size, and lies in their middle.
/// False where the job is aborted. Throws PictureError, FitError, std::bad_alloc, and what
/// `whileItRuns` throws.
/// @param count of its pages
bool printPages(pappl_job_t* job, pappl_device_t* device, const std::string& path,
                unsigned int count, const std::function<void()>& whileItRuns);

/// Prints a job's document by a function that draws, and gives what it gives; what goes wrong with
/// the document ends the job, and a cancelled job stops drawing.
/// @param print takes what is to be called while ghostscript runs
bool printDrawn(pappl_job_t* job,
                const std::function<bool(const std::function<void()>& whileItRuns)>& print);

}  // namespace kelp_app

#endif
