#include <cstring>

#include "image/dot_packing.h"
#include "simd/forms.h"

// The file is compiled once for each kind of vectors.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/dot_unpacking.cpp"
#include <hwy/foreach_target.h>  // before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR || HWY_TARGET == HWY_EMU128

HWY_ATTR std::size_t unpackVectors(const std::uint8_t* /*packed*/, std::size_t /*width*/,
                                   std::uint8_t* /*values*/) {
    return 0;
}

#else

namespace hn = hwy::HWY_NAMESPACE;

/// Unpacks whole vectors of a row.
/// @return the columns that it unpacked, a multiple of 8
HWY_ATTR std::size_t unpackVectors(const std::uint8_t* packed, std::size_t width,
                                   std::uint8_t* values) {
    const hn::CappedTag<std::uint8_t, 32> bytes;
    const hn::Repartition<std::uint32_t, decltype(bytes)> words;
    const std::size_t lanes = hn::Lanes(bytes);
    // Every word of a vector holds all the bytes of dots that belong to it.
    alignas(32) static constexpr std::uint8_t kByteOf[32] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1,
                                                             1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2,
                                                             2, 2, 3, 3, 3, 3, 3, 3, 3, 3};
    alignas(16) static constexpr std::uint8_t kBitOf[16] = {0x80, 0x40, 0x20, 0x10, 0x08, 0x04,
                                                            0x02, 0x01, 0x80, 0x40, 0x20, 0x10,
                                                            0x08, 0x04, 0x02, 0x01};
    const auto byteOf = hn::Load(bytes, kByteOf);
    const auto bitOf = hn::LoadDup128(bytes, kBitOf);
    const auto one = hn::Set(bytes, 1);
    std::size_t x = 0;
    for (; x + lanes <= width; x += lanes) {
        std::uint32_t word = 0;
        std::memcpy(&word, packed + x / 8, lanes / 8);
        const auto all = hn::BitCast(bytes, hn::Set(words, word));
        const auto isSet = hn::TestBit(hn::TableLookupBytes(all, byteOf), bitOf);
        hn::StoreU(hn::And(hn::VecFromMask(bytes, isSet), one), bytes, values + x);
    }
    return x;
}

#endif

}  // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
HWY_EXPORT(unpackVectors);

namespace {

using EightDots = std::array<std::uint8_t, 8>;

constexpr std::array<EightDots, 256> dotsOfBytes() {
    std::array<EightDots, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        for (unsigned i = 0; i < 8; ++i) {
            table[byte][i] = static_cast<std::uint8_t>((byte >> (7 - i)) & 1);
        }
    }
    return table;
}

constexpr std::array<EightDots, 256> kDotsOfBytes = dotsOfBytes();

}  // namespace

void unpackDots(const std::uint8_t* packed, std::size_t width, std::uint8_t* values) {
    std::size_t x =
        simd::isPlain() ? 0 : HWY_DYNAMIC_DISPATCH(unpackVectors)(packed, width, values);
    for (; x + 8 <= width; x += 8) {
        std::memcpy(values + x, kDotsOfBytes[packed[x / 8]].data(), 8);
    }
    if (x < width) {
        std::memcpy(values + x, kDotsOfBytes[packed[x / 8]].data(), width - x);
    }
}
#endif
