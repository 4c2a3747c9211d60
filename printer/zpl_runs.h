#ifndef KELP_PRINTER_ZPL_RUNS_H
#define KELP_PRINTER_ZPL_RUNS_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// From a row's digits to its runs, a block of digits at a time. All writing goes to room that is
// known to suffice: a run of n digits takes at most n characters.

/// Writes `count` times a digit as zplAppendRun does; @return the end of what it wrote.
inline char* zplPutRun(char* out, char digit, unsigned int count) {
    if (count > 1) {
        for (; count >= 400; count -= 400) {
            *out++ = 'z';
        }
        if (count >= 20) {
            *out++ = static_cast<char>('f' + count / 20);
            count %= 20;
        }
        if (count > 0) {
            *out++ = static_cast<char>('F' + count);
        }
    }
    *out++ = digit;
    return out;
}

/// Some digits of a row, and which of them equal the one before.
struct DigitBlock {
    static constexpr std::size_t kBytes = 32;
    static constexpr std::size_t kDigits = 2 * kBytes;
    /// Single digits are copied so many at once, also where fewer are left.
    static constexpr std::size_t kStep = 16;

    /// In front of the digits lies the last one of the block before.
    alignas(kStep) std::array<char, kStep + kDigits + kStep> room{};
    /// Bit i for digit i.
    std::uint64_t repeats = 0;

    char* digits() { return room.data() + kStep; }
    const char* digits() const { return room.data() + kStep; }
};

/// Goes from run to run of a row.
class ZplRunWriter {
  public:
    /// @param out room for a character a digit, and DigitBlock::kStep more
    explicit ZplRunWriter(char* out) : out_(out) {}

    /// Takes the first `count` digits of a block, 1 to kDigits; all of them but in the last block.
    void put(const DigitBlock& block, std::size_t count) {
        std::size_t at = 0;
        while (at < count) {
            const std::uint64_t ahead = block.repeats >> at;
            if ((ahead & 1) != 0) {
                const auto more = static_cast<std::size_t>(std::countr_one(ahead));
                count_ += static_cast<unsigned int>(std::min(more, count - at));
                at += more;
                continue;
            }
            if (count_ > 0) {
                out_ = zplPutRun(out_, digit_, count_);
            }
            // The last digit that repeats none may itself be repeated.
            const auto different = static_cast<std::size_t>(std::countr_zero(ahead));
            const std::size_t singles = std::min(different, count - at) - 1;
            putSingles(block.digits() + at, singles);
            at += singles;
            digit_ = block.digits()[at++];
            count_ = 1;
        }
    }

    /// Ends the row; @return the end of what was written.
    char* end() {
        if (digit_ != '0') {
            // A row that ends in ones is written out: '!' is not used.
            return count_ > 0 ? zplPutRun(out_, digit_, count_) : out_;
        }
        if (count_ % 2 != 0) {
            *out_++ = '0';
            --count_;
        }
        if (count_ > 0) {
            *out_++ = ',';
        }
        return out_;
    }

  private:
    void putSingles(const char* digits, std::size_t count) {
        for (std::size_t i = 0; i < count; i += DigitBlock::kStep) {
            std::memcpy(out_ + i, digits + i, DigitBlock::kStep);
        }
        out_ += count;
    }

    char* out_;
    char digit_ = 0;
    unsigned int count_ = 0;
};

#endif
