#ifndef KELP_FITTER_FIT_ERROR_H
#define KELP_FITTER_FIT_ERROR_H

#include <stdexcept>

/// Ends the job; the message is one sentence for the person who printed.
class FitError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The filter behind this one has ended and has told why; the job's last error should stay its own.
class ReaderGone : public FitError {
  public:
    using FitError::FitError;
};

#endif
