#pragma once

#include <cstddef>

#include "fuzz/raster_job.h"

namespace kelp_fuzz::page_loop_plan {

// The bytes of a plan that are the page loop's own.
enum Plan : std::size_t {
    halftone = RasterJob::own,
    brightness,
    darkness,
    gaps,
    flags,
    words,
    failing_files,
    unusual,  // odd: the parameters that follow are used
    border = unusual + 1,
    border_shift,
    resolution,
    skipped,
    edges,
    contrast,
    plan_end
};
static_assert(plan_end <= RasterJob::plan_size);

}  // namespace kelp_fuzz::page_loop_plan
