#pragma once

#include <cstdio>
#include <string>
#include <utility>

#include "tests/unit/printer/support/memory_stream.h"

namespace kelp_fuzz {

// The C library's standard error writes to memory while the object lives; a sanitizer's report does
// not pass through it.
class CapturedLog {
  public:
    CapturedLog() : shown_(std::exchange(stderr, log_.file())) {}
    ~CapturedLog() { stderr = shown_; }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    std::string take() { return log_.take(); }

  private:
    kelp_test::MemoryStream log_;
    std::FILE* shown_;
};

}  // namespace kelp_fuzz
