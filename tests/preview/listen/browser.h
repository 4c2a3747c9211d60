#pragma once

#include <sys/types.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "tests/support/descriptor.h"

namespace kelp_test {

// A headless Chromium with one tab, driven over pipes. It needs no display, no bus and no sandbox,
// keeps its files in a folder of the test, and ends with the object.
class Browser {
  public:
    // Throws std::runtime_error, with what the browser said, when it does not start.
    explicit Browser(const std::filesystem::path& folder);
    ~Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    // Opens the page in a tab of its own; it may still be loading then.
    void open(const std::string& url);
    // The value of a JavaScript expression in the page, which may be a promise. Nothing when the
    // page went while it was computed, or it threw.
    std::optional<nlohmann::json> evaluate(const std::string& expression);
    // A PNG of what the window shows.
    std::string screenshot();

  private:
    // Sends a command and waits for its answer. Throws std::runtime_error when none comes.
    nlohmann::json call(const std::string& method, const nlohmann::json& parameters);
    std::string next_message();
    [[noreturn]] void fail(const std::string& what) const;

    std::filesystem::path folder_;
    pid_t process_ = -1;
    Descriptor commands_;
    Descriptor answers_;
    std::string received_;
    std::string session_;
    int last_id_ = 0;
};

}  // namespace kelp_test
