#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelp_test {

// A generator with a sequence of its own, the same on every machine (SplitMix64).
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next();
    // A number of [low, high].
    int between(int low, int high);
    bool one_in(int count) { return between(1, count) == 1; }
    // One element of a container with random access.
    template <typename Container>
    const auto& pick(const Container& container) {
        return container[static_cast<std::size_t>(
            between(0, static_cast<int>(container.size()) - 1))];
    }

  private:
    std::uint64_t state_;
};

// Pixels of pages, one byte a pixel, rows packed.
std::string uniform(unsigned width, unsigned height, unsigned char value);
// From 0 at the left top to 255 at the right bottom.
std::string gradient(unsigned width, unsigned height);
std::string noise(unsigned width, unsigned height, Random& random);
// Dark bars of text-like lengths on light paper.
std::string text_bars(unsigned width, unsigned height, Random& random);
// A picture that no mirror, turn or shift maps onto itself.
std::string asymmetric(unsigned width, unsigned height);

// Rows of `columns` text characters, one per pixel: '.' is 0, '#' is 255, line by line.
std::string drawn(std::string_view rows);

}  // namespace kelp_test
