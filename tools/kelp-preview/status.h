#ifndef KELP_TOOLS_KELP_PREVIEW_STATUS_H
#define KELP_TOOLS_KELP_PREVIEW_STATUS_H

// Exit statuses.
constexpr int kStatusDone = 0;
constexpr int kStatusFailed = 1;
constexpr int kStatusWarned = 2;  ///< done, but something in the input is not right

// Those of diff are what programs that compare have.
constexpr int kStatusDifferent = 1;
constexpr int kStatusTrouble = 2;

#endif
