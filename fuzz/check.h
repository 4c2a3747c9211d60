#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace kelp_fuzz {

// Ends the run where something that the code promises does not hold; libFuzzer then keeps the
// input.
[[noreturn]] inline void broken(const std::string& what) {
    std::fprintf(stderr, "BROKEN: %s\n", what.c_str());
    std::abort();
}

inline void require(bool holds, const char* what) {
    if (!holds) {
        broken(what);
    }
}

// Shows the first place where two texts differ.
inline void require_same(const std::string& is, const std::string& should_be, const char* what) {
    if (is == should_be) {
        return;
    }
    std::size_t at = 0;
    while (at < is.size() && at < should_be.size() && is[at] == should_be[at]) {
        ++at;
    }
    const std::size_t from = at < 40 ? 0 : at - 40;
    broken(std::string(what) + " differs at byte " + std::to_string(at) + ", is\n" +
           is.substr(from, 120) + "\nand should be\n" + should_be.substr(from, 120));
}

}  // namespace kelp_fuzz
