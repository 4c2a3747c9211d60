#pragma once

#include <string>
#include <vector>

#include "tests/support/raster_stream.h"

namespace kelp_test {

// What a queue of the model sends for these pages: the page fitter and the filter, with the model's
// PPD and the job's options.
std::string filter_bytes(const std::string& model, const std::vector<Page>& pages,
                         const std::string& options = {});

// The same of a raster as a spooler's filters made it.
std::string filter_bytes_of_raster(const std::string& model, const std::string& raster);

}  // namespace kelp_test
