#ifndef KELP_APP_STATE_TEXT_H
#define KELP_APP_STATE_TEXT_H

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/job_number.h"

namespace kelp_app {

/// A job in the framework's saved state: names and values.
using SavedJob = std::vector<std::pair<std::string, std::string>>;

/// The framework's saved state with its jobs changed. It writes a job's title and user as they
/// came: line ends in them would make lines of their own, perhaps printers. So control characters
/// become blanks and what is over 255 bytes of a value is left out.
std::string withJobs(std::string_view state,
                     const std::function<void(const JobNumber&, SavedJob&)>& change);

/// What a state to save holds.
struct JobsToSave {
    std::set<JobNumber> waiting;        ///< those that have not ended
    bool areDocumentsOnTheWay = false;  ///< of jobs that wait
};

/// The state as it is saved: what is under way waits again, for the framework never would end it.
std::string stateToSave(std::string_view state, JobsToSave& jobs);

/// The state as it is loaded: of the jobs that wait, those that have begun are aborted, for nothing
/// should print twice. A job whose document has not come yet has no format, and the framework would
/// leave out all that stand behind it: it gets one, and ends for want of a document.
std::string stateToLoad(std::string_view state, const std::set<JobNumber>& begun);

/// Whether a state that was saved has come to its end, of so many printers.
bool isWholeState(std::string_view state, int printers);

}  // namespace kelp_app

#endif
