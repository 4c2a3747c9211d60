#pragma once

namespace kelp_test {

// time() stands still at this local time, in a zone that is not UTC, while the object lives. The
// executable is linked so that the libraries under test call it.
class FixedTime {
  public:
    FixedTime(int year, int month, int day, int hour, int minute, int second);
    ~FixedTime();
    FixedTime(const FixedTime&) = delete;
    FixedTime& operator=(const FixedTime&) = delete;
};

}  // namespace kelp_test
