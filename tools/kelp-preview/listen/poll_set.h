#ifndef KELP_TOOLS_KELP_PREVIEW_LISTEN_POLL_SET_H
#define KELP_TOOLS_KELP_PREVIEW_LISTEN_POLL_SET_H

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <system_error>
#include <vector>

namespace kelp_listen {

using Clock = std::chrono::steady_clock;

/// What one turn of the loop waits for: something to read, or a moment.
class PollSet {
  public:
    void add(int descriptor) { entries_.push_back({descriptor, POLLIN, 0}); }
    void until(std::optional<Clock::time_point> moment) {
        if (moment && (!deadline_ || *moment < *deadline_)) {
            deadline_ = moment;
        }
    }
    void wait() {
        int milliseconds = -1;
        if (deadline_) {
            // rounded up, or the loop would spin through the last millisecond
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Clock::now());
            milliseconds = static_cast<int>(std::clamp<long long>(left.count(), 0, 1'000'000));
        }
        if (poll(entries_.data(), entries_.size(), milliseconds) < 0) {
            if (errno != EINTR) {
                throw std::system_error(errno, std::generic_category(), "poll");
            }
            entries_.clear();
        }
    }
    bool isReady(int descriptor) const {
        return std::any_of(entries_.begin(), entries_.end(), [&](const pollfd& entry) {
            return entry.fd == descriptor && entry.revents != 0;
        });
    }

  private:
    std::vector<pollfd> entries_;
    std::optional<Clock::time_point> deadline_;
};

}  // namespace kelp_listen

#endif
