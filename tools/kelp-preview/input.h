#ifndef KELP_TOOLS_KELP_PREVIEW_INPUT_H
#define KELP_TOOLS_KELP_PREVIEW_INPUT_H

#include <array>
#include <streambuf>
#include <string>

/// A file, or standard input for "-", as a stream. Opening and reading throw std::system_error,
/// with the file's name.
class Input : public std::streambuf {
  public:
    explicit Input(const std::string& path);
    ~Input() override;
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

  protected:
    int_type underflow() override;

  private:
    std::string shownName_;
    int descriptor_ = 0;
    std::array<char, 1 << 16> buffer_{};
};

#endif
