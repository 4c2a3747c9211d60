#pragma once

#include <random>
#include <string>

namespace kelp_test {

// The same numbers on every machine.
class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    unsigned below(unsigned end) { return static_cast<unsigned>(engine_() % end); }
    char of(const std::string& characters) {
        return characters[below(static_cast<unsigned>(characters.size()))];
    }

  private:
    std::mt19937 engine_;
};

}  // namespace kelp_test
