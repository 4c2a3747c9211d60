#include "printer/zpl_encoding.h"
#include "printer/zpl_runs.h"
#include "simd/forms.h"

// The file is compiled once for each kind of vectors.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "printer/zpl_row.cpp"
#include <hwy/foreach_target.h>  // before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if HWY_TARGET != HWY_SCALAR && HWY_TARGET != HWY_EMU128

namespace hn = hwy::HWY_NAMESPACE;

/// Fills a block from its kBytes bytes; the digit in front of it is there already.
HWY_ATTR void split(const unsigned char* row, DigitBlock& block) {
    const hn::FixedTag<std::uint8_t, 16> bytes;
    alignas(16) static constexpr std::uint8_t kHex[16] = {'0', '1', '2', '3', '4', '5', '6', '7',
                                                          '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
    const auto hex = hn::Load(bytes, kHex);
    const auto nibble = hn::Set(bytes, 0x0F);
    auto* digits = reinterpret_cast<std::uint8_t*>(block.digits());
    for (std::size_t i = 0; i < DigitBlock::kBytes; i += 16) {
        const auto both = hn::LoadU(bytes, row + i);
        const auto high = hn::TableLookupBytes(hex, hn::And(hn::ShiftRight<4>(both), nibble));
        const auto low = hn::TableLookupBytes(hex, hn::And(both, nibble));
        hn::Store(hn::InterleaveLower(bytes, high, low), bytes, digits + 2 * i);
        hn::Store(hn::InterleaveUpper(bytes, high, low), bytes, digits + 2 * i + 16);
    }
    block.repeats = 0;
    for (std::size_t i = 0; i < DigitBlock::kDigits; i += 16) {
        const auto same = hn::Eq(hn::Load(bytes, digits + i), hn::LoadU(bytes, digits + i - 1));
        std::uint8_t bits[2];
        hn::StoreMaskBits(bytes, same, bits);
        block.repeats |= static_cast<std::uint64_t>(bits[0] | bits[1] << 8) << i;
    }
}

/// Hands whole blocks of a row to the writer; @return their bytes.
HWY_ATTR std::size_t putBlocks(const unsigned char* row, std::size_t rowBytes, DigitBlock& block,
                               ZplRunWriter& writer) {
    std::size_t at = 0;
    for (; at + DigitBlock::kBytes <= rowBytes; at += DigitBlock::kBytes) {
        split(row + at, block);
        writer.put(block, DigitBlock::kDigits);
        block.digits()[-1] = block.digits()[DigitBlock::kDigits - 1];
    }
    return at;
}

#else

HWY_ATTR std::size_t putBlocks(const unsigned char* /*row*/, std::size_t /*rowBytes*/,
                               DigitBlock& /*block*/, ZplRunWriter& /*writer*/) {
    return 0;
}

#endif

}  // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace {

HWY_EXPORT(putBlocks);

/// As the vectors do, of up to kBytes bytes.
void splitPlainly(const unsigned char* row, std::size_t count, DigitBlock& block) {
    static constexpr char hex[] = "0123456789ABCDEF";
    char* digits = block.digits();
    for (std::size_t i = 0; i < count; ++i) {
        digits[2 * i] = hex[row[i] >> 4];
        digits[2 * i + 1] = hex[row[i] & 0x0F];
    }
    const char* before = digits - 1;
    block.repeats = 0;
    for (std::size_t i = 0; i < 2 * count; ++i) {
        block.repeats |= static_cast<std::uint64_t>(digits[i] == before[i] ? 1 : 0) << i;
    }
}

}  // namespace

std::size_t zplRowRoom(std::size_t rowBytes) {
    return 2 * rowBytes + DigitBlock::kStep;
}

void zplAppendRow(std::string& out, const unsigned char* row, std::size_t rowBytes) {
    const std::size_t before = out.size();
    out.resize(before + zplRowRoom(rowBytes));
    DigitBlock block;
    ZplRunWriter writer(out.data() + before);
    std::size_t at =
        simd::isPlain() ? 0 : HWY_DYNAMIC_DISPATCH(putBlocks)(row, rowBytes, block, writer);
    while (at < rowBytes) {
        const std::size_t count = std::min(DigitBlock::kBytes, rowBytes - at);
        splitPlainly(row + at, count, block);
        writer.put(block, 2 * count);
        block.digits()[-1] = block.digits()[2 * count - 1];
        at += count;
    }
    out.resize(static_cast<std::size_t>(writer.end() - out.data()));
}
#endif
