#ifndef KELP_TOOLS_KELP_PREVIEW_INPUT_H
#define KELP_TOOLS_KELP_PREVIEW_INPUT_H

#include <array>
#include <cstdint>
#include <streambuf>
#include <string>

#include "tools/kelp-preview/progress.h"

/// A file, or standard input for "-", as a stream. Opening and reading throw std::system_error,
/// with the file's name.
class Input : public std::streambuf {
  public:
    /// @param progress is told how much was read; borrowed
    Input(const std::string& path, Progress& progress);
    ~Input() override;
    const std::string& shownName() const { return shownName_; }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

  protected:
    int_type underflow() override;

  private:
    std::string shownName_;
    Progress& progress_;
    int descriptor_ = 0;
    std::uint64_t bytesRead_ = 0;
    std::array<char, 1 << 16> buffer_{};
};

#endif
