#pragma once

#include <cstddef>

namespace kelp_test {

/// While it lives, malloc and calloc refuse every block of at least `bytes` bytes but the first
/// `granted` ones, and operator new too. It needs the linker's --wrap=malloc and --wrap=calloc.
class AllocationFailure {
  public:
    explicit AllocationFailure(std::size_t bytes, std::size_t granted = 0);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;

    /// Requests refused so far.
    std::size_t refused() const;
};

}  // namespace kelp_test
