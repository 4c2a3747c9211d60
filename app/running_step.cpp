#include "app/running_step.h"

#include <atomic>

namespace kelp_app {

namespace {

std::atomic<int> runningSteps = 0;

}  // namespace

RunningStep::RunningStep() {
    ++runningSteps;
}

RunningStep::~RunningStep() {
    --runningSteps;
}

bool RunningStep::areAny() {
    return runningSteps > 0;
}

}  // namespace kelp_app
