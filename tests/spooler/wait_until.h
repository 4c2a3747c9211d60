#pragma once

#include <chrono>
#include <thread>

namespace kelp_test {

// Asks again and again until the answer is yes. False when it never was within the limit, which is
// there to end a test that hangs: nothing depends on its length.
template <typename Condition>
bool wait_until(Condition condition, std::chrono::seconds limit = std::chrono::seconds(60)) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return true;
}

}  // namespace kelp_test
