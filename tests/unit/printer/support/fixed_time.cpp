#include "tests/unit/printer/support/fixed_time.h"

#include <cstdlib>
#include <ctime>
#include <optional>

namespace {

std::optional<std::time_t> now;

}  // namespace

// The linker sends every call of time() to the second of these and calls the C library's own the
// first (--wrap).
extern "C" {
std::time_t __real_time(std::time_t* result);
std::time_t __wrap_time(std::time_t* result);

std::time_t __wrap_time(std::time_t* result) {
    if (!now) {
        return __real_time(result);
    }
    if (result != nullptr) {
        *result = *now;
    }
    return *now;
}
}

namespace kelp_test {

FixedTime::FixedTime(int year, int month, int day, int hour, int minute, int second) {
    setenv("TZ", "KLP-5:30", 1);
    tzset();
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    now = std::mktime(&local);
}

FixedTime::~FixedTime() {
    now.reset();
    unsetenv("TZ");
    tzset();
}

}  // namespace kelp_test
