#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/preview/decoded.h"
#include "tests/preview/listen/connection.h"
#include "tests/preview/listen/running_listener.h"
#include "tests/spooler/wait_until.h"
#include "tests/support/temp_dir.h"

namespace kelp_test {

// A listener in a folder of its own. After a test it stops cleanly and nothing unfinished is left.
class ListenTest : public testing::Test {
  protected:
    using Names = std::vector<std::string>;
    using Rows = std::vector<std::string>;

    RunningListener& start(const std::vector<std::string>& more = {}) {
        return listener_.emplace(dir.path(), more);
    }
    RunningListener& listener() { return *listener_; }
    void print(const std::string& bytes) { print_job(listener().port(), bytes); }
    std::filesystem::path jobs() const { return dir / "jobs"; }

    void TearDown() override {
        if (!listener_) {
            return;
        }
        if (listener_->is_running()) {
            EXPECT_EQ(listener_->stop(), 0);
        }
        for (const std::string& name : names_in(jobs())) {
            EXPECT_NE(name[0], '.') << name << " is left";
        }
        for (const std::string& line : listener_->error()) {
            EXPECT_EQ(line.find("Sanitizer"), std::string::npos) << line;
        }
    }

    TempDir dir;
    // 16 x 2 dots, 1234 and 0F00
    const std::string one = block(4, 2, "12340F,");
    const Rows dots = {"...#..#...##.#..", "....####........"};

  private:
    std::optional<RunningListener> listener_;
};

}  // namespace kelp_test
