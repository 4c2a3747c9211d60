#ifndef KELP_FITTER_HEADER_NUMBER_H
#define KELP_FITTER_HEADER_NUMBER_H

#include <cstdint>
#include <cstring>

/// The number in an enumeration of a page header. Read as bytes: a damaged header's may hold no
/// value of its type.
template <typename Enumeration>
std::uint32_t headerNumber(const Enumeration& field) {
    std::uint32_t number = 0;
    static_assert(sizeof number == sizeof field);
    std::memcpy(&number, &field, sizeof number);
    return number;
}

#endif
