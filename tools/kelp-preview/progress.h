#ifndef KELP_TOOLS_KELP_PREVIEW_PROGRESS_H
#define KELP_TOOLS_KELP_PREVIEW_PROGRESS_H

#include <chrono>
#include <string>

/// A line on standard error that tells how far the work is, where that is a terminal and the work
/// takes more than a second.
class Progress {
  public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows the text, unless it is too early or the line has only just changed.
    void show(const std::string& text);
    /// Takes the line away, before anything else is printed.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;

    bool terminal_;
    bool shown_ = false;
    Clock::time_point next_;  ///< when the line may change
};

#endif
