#pragma once

#include <cstddef>
#include <string>

#include "tests/preview/read_png.h"

namespace kelp_test {

// Somebody else's reader of the command language, from npm, kept in the build tree.
class Renderer {
  public:
    // Fetches it, unless it is there. A fetch that npm answers and that fails all the same throws
    // std::runtime_error.
    Renderer();

    // Why it cannot be used here; empty when it can.
    const std::string& why_not() const { return why_not_; }

    // The label of this number, from 1, on paper of this size in dots.
    Picture draw(const std::string& stream, std::size_t number, std::size_t width,
                 std::size_t height) const;

  private:
    std::string why_not_;
};

}  // namespace kelp_test
