#include "app/watchdog.h"

#include <utility>

namespace kelp_app {

Watchdog::Watchdog(std::chrono::milliseconds limit, std::function<void()> bark)
    : limit_(limit), bark_(std::move(bark)), thread_([this] { watch(); }) {}

Watchdog::~Watchdog() {
    {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Watchdog::feed() {
    {
        const std::lock_guard lock(mutex_);
        ++meals_;
    }
    changed_.notify_all();
}

void Watchdog::watch() {
    std::unique_lock lock(mutex_);
    while (true) {
        const unsigned int before = meals_;
        const bool isWell =
            changed_.wait_for(lock, limit_, [&] { return meals_ != before || isOver_; });
        if (isOver_) {
            return;
        }
        if (!isWell) {
            lock.unlock();
            bark_();
            lock.lock();
        }
    }
}

}  // namespace kelp_app
