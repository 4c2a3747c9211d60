#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_PAGE_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_WEB_PAGE_H

#include <string>

#include "tools/kelp-preview/listen/job_table.h"

namespace kelp_listen {

inline constexpr const char* kFrontPath = "/";
inline constexpr const char* kStillPath = "/still";
inline constexpr const char* kStylePath = "/style.css";
std::string jobPath(const ShownJob& job);
std::string streamPath(const ShownJob& job);
/// @param label from 1
std::string picturePath(const ShownJob& job, std::size_t label);

/// The newest jobs with their labels, then a list of the others.
/// @param printer where it takes jobs, "127.0.0.1:9100"
/// @param renews whether the page asks the browser to load it anew every few seconds
std::string frontPage(const JobTable& table, const std::string& printer, bool renews);

/// One job with all its labels.
std::string jobPage(const ShownJob& job);

/// For all pages.
std::string styleSheet();

}  // namespace kelp_listen

#endif
