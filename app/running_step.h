#ifndef KELP_APP_RUNNING_STEP_H
#define KELP_APP_RUNNING_STEP_H

namespace kelp_app {

/// Something that a thread does with a job, as long as it lives.
class RunningStep {
  public:
    RunningStep();
    ~RunningStep();
    RunningStep(const RunningStep&) = delete;
    RunningStep& operator=(const RunningStep&) = delete;

    /// Whether any thread does.
    static bool areAny();
};

}  // namespace kelp_app

#endif
