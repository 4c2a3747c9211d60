#ifndef KELP_APP_PICTURE_PAGE_H
#define KELP_APP_PICTURE_PAGE_H

#include <pappl/pappl.h>

#include "app/page_job.h"
#include "pictures/grey_picture.h"

namespace kelp_app {

/// By how many quarters counterclockwise a job wants its pictures turned: 0, 1 or 3. Half a turn is
/// the printer's.
unsigned int quarterTurns(ipp_orient_t orientation);

/// Prints a picture in the middle of a white page, and counts the page. False where the job is
/// aborted. Throws FitError, std::bad_alloc.
/// @param page of grey samples, 255 is white
/// @param picture not larger than the page
bool printCentred(pappl_job_t* job, pappl_device_t* device, const cups_page_header2_t& page,
                  const GreyPicture& picture, PageJob& pages);

}  // namespace kelp_app

#endif
