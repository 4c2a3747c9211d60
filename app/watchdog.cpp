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
        isFed_ = true;
    }
    changed_.notify_all();
}

void Watchdog::watch() {
    std::unique_lock lock(mutex_);
    while (!isOver_) {
        isFed_ = false;
        if (!changed_.wait_for(lock, limit_, [this] { return isFed_ || isOver_; })) {
            lock.unlock();
            bark_();
            lock.lock();
        }
    }
}

}  // namespace kelp_app
