#ifndef KELP_APP_JOB_PAGES_H
#define KELP_APP_JOB_PAGES_H

#include <pappl/pappl.h>

#include <functional>
#include <memory>
#include <string_view>

#include "app/page_job.h"

namespace kelp_app {

using JobOptions = std::unique_ptr<pappl_pr_options_t, decltype(&papplJobDeletePrintOptions)>;

/// What a job asks for, with the printer's defaults. Throws std::bad_alloc.
/// @param pages of its document
JobOptions optionsFor(pappl_job_t* job, unsigned int pages);

/// The pages of a job, with what it and its printer ask for. Throws FitError for media that the
/// printer does not take.
std::unique_ptr<PageJob> pagesFor(pappl_job_t* job, const pappl_pr_options_t& options);

/// Sends bytes to the job's printer, none of another job among them, and waits for one on the
/// network that is not there. Where it does not take them all, the job is aborted, and the result
/// is false; a cancelled job stays one, and ends behind a piece.
/// @param nextPiece empty after the last; what it throws goes on
bool deliverOrAbort(pappl_job_t* job, pappl_device_t* device,
                    const std::function<std::string_view()>& nextPiece);

/// Sends a label likewise, and keeps it as the printer's last one. Throws std::bad_alloc.
bool deliverOrAbort(pappl_job_t* job, pappl_device_t* device, Label label);

}  // namespace kelp_app

#endif
