#ifndef KELP_APP_WATCHDOG_H
#define KELP_APP_WATCHDOG_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace kelp_app {

/// Does something when nobody has said for a while that all is well.
class Watchdog {
  public:
    /// @param bark called in a thread of its own, again after each such while
    Watchdog(std::chrono::milliseconds limit, std::function<void()> bark);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    /// All is well.
    void feed();

  private:
    void watch();

    std::chrono::milliseconds limit_;
    std::function<void()> bark_;
    std::mutex mutex_;
    std::condition_variable changed_;
    unsigned int meals_ = 0;
    bool isOver_ = false;
    std::thread thread_;
};

}  // namespace kelp_app

#endif
