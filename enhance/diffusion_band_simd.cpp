// Rows of the stencil diffusion side by side. A pixel needs its neighbours on the left and, of the
// row above, those up to two columns on: row y + 1 can follow row y at a distance of four columns,
// so that every row of a band goes on by one column in one step.
//
//   step t   row 0  . . . . . . . . x        column t
//            row 1  . . . . x                column t - 4
//            row 2  x                        column t - 8
//
// A lane is a row, and each lane does what the plain form does, in the same order and width. Row
// r is lane r / kVectors of vector r % kVectors: the row above is then the same lane of the vector
// before, and lanes move only from the last vector to the first.

#include <cstring>

#include "enhance/diffusion_band.h"
#include "enhance/diffusion_weights.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "enhance/diffusion_band_simd.cpp"
#include <hwy/foreach_target.h>  // keep it before highway.h
//
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace diffusion::HWY_NAMESPACE {

#if HWY_TARGET == HWY_EMU128 || HWY_TARGET == HWY_SCALAR

std::ptrdiff_t rowCount() {
    return 0;
}

void run(const Band&) {}

#else

namespace hn = hwy::HWY_NAMESPACE;
using F = hn::ScalableTag<float>;
using I = hn::Rebind<std::int32_t, F>;
using U = hn::Rebind<std::uint32_t, F>;
using Floats = hn::Vec<F>;
using Ints = hn::Vec<I>;
using Words = hn::Vec<U>;

constexpr F f;
constexpr I i32;
constexpr U u32;
constexpr std::ptrdiff_t kLanes = hn::MaxLanes(f);
constexpr std::ptrdiff_t kVectors = 2;
constexpr std::ptrdiff_t kRows = kLanes * kVectors;
constexpr std::ptrdiff_t kDistance = 4;  // columns from row to row, and steps to a group
static_assert(kRows * kDistance + 16 + 16 <= kBandMargin);

std::ptrdiff_t rowCount() {
    return kRows;
}

/// The rows of one vector.
struct Lanes {
    HWY_INLINE Lanes() {}  // an implicit one would not be compiled for the target

    Floats carried1, carried2, carried3;  ///< from above to the next three columns, so far
    Floats left, left2;                   ///< errors of the last two columns
    Ints leftShade;                       ///< what white loses by the last column
    Ints shades[kDistance];               ///< the same for the columns of the last group
    Words levels;                         ///< of the columns of a group, the first one lowest
    Words decided;
    Ints inner;  ///< all bits set in the rows that have neighbours
};

struct Constants {
    Ints white, shade;
    Floats threshold;
    Ints width;
};

/// One column of a vector's rows. `above` is the error of the row above two columns on, aboveShade
/// what white loses by the pixel above.
template <bool kEdges, int kColumn>
HWY_INLINE void step(Lanes& r, const Constants& c, Floats above, Ints aboveShade, Ints column) {
    const Floats carried = hn::Add(r.carried1, hn::Mul(above, hn::Set(f, kBelowLeft2)));
    r.carried1 = hn::Add(r.carried2, hn::Mul(above, hn::Set(f, kBelowLeft)));
    r.carried2 = hn::Add(r.carried3, hn::Mul(above, hn::Set(f, kBelow)));
    r.carried3 = hn::Mul(above, hn::Set(f, kBelowRight));

    const Words byte = hn::And(hn::ShiftRight<8 * kColumn>(r.levels), hn::Set(u32, 255U));
    const Floats pixel = hn::ConvertTo(f, hn::BitCast(i32, byte));
    const Floats before = hn::Add(carried, hn::Mul(r.left2, hn::Set(f, kRight2)));
    const Floats level = hn::Add(hn::Add(before, hn::Mul(r.left, hn::Set(f, kRight))), pixel);

    const Ints isWhite = hn::BitCast(i32, hn::VecFromMask(f, hn::Gt(level, c.threshold)));
    Ints shade = hn::Add(r.leftShade, aboveShade);
    if constexpr (kEdges) {
        const auto hasNeighbours = hn::And(hn::Gt(column, hn::Zero(i32)),
                                           hn::Gt(hn::Sub(c.width, hn::Set(i32, 1)), column));
        shade = hn::And(hn::IfThenElseZero(hasNeighbours, shade), r.inner);
    }
    const Ints taken = hn::And(hn::Sub(c.white, shade), isWhite);
    Floats error = hn::Sub(level, hn::BitCast(f, taken));
    if constexpr (kEdges) {
        const auto isInside = hn::And(hn::Gt(column, hn::Set(i32, -1)), hn::Gt(c.width, column));
        error = hn::IfThenElseZero(hn::RebindMask(f, isInside), error);
    }
    r.left2 = r.left;
    r.left = error;
    r.leftShade = hn::AndNot(isWhite, c.shade);
    r.shades[kColumn] = r.leftShade;
    const Words dot = hn::And(hn::BitCast(u32, isWhite), hn::Set(u32, 255U << (8 * kColumn)));
    r.decided = kColumn == 0 ? dot : hn::Or(r.decided, dot);
}

/// Row r, from lane to lane, and back: four words of each row are four vectors of a word a row.
template <class D>
HWY_INLINE hn::Vec<D> loadRows([[maybe_unused]] D d, const unsigned char* pixels,
                               std::ptrdiff_t stride) {
    const hn::Full128<std::uint8_t> bytes;
    const hn::Full128<std::uint32_t> words;
    const auto low = hn::BitCast(words, hn::LoadU(bytes, pixels));
    if constexpr (kLanes == 4) {
        return low;
    } else {
        return hn::Combine(d, hn::BitCast(words, hn::LoadU(bytes, pixels + stride)), low);
    }
}

template <class D>
HWY_INLINE void storeRows([[maybe_unused]] D d, hn::Vec<D> v, unsigned char* pixels,
                          std::ptrdiff_t stride) {
    const hn::Full128<std::uint8_t> bytes;
    if constexpr (kLanes == 4) {
        hn::StoreU(hn::BitCast(bytes, v), bytes, pixels);
    } else {
        const hn::Half<D> half;
        hn::StoreU(hn::BitCast(bytes, hn::LowerHalf(half, v)), bytes, pixels);
        hn::StoreU(hn::BitCast(bytes, hn::UpperHalf(half, v)), bytes, pixels + stride);
    }
}

HWY_INLINE void transpose(Words& a, Words& b, Words& c, Words& d) {
    const hn::Repartition<std::uint64_t, U> u64;
    const auto abLow = hn::BitCast(u64, hn::InterleaveLower(u32, a, b));
    const auto abHigh = hn::BitCast(u64, hn::InterleaveUpper(u32, a, b));
    const auto cdLow = hn::BitCast(u64, hn::InterleaveLower(u32, c, d));
    const auto cdHigh = hn::BitCast(u64, hn::InterleaveUpper(u32, c, d));
    a = hn::BitCast(u32, hn::InterleaveLower(u64, abLow, cdLow));
    b = hn::BitCast(u32, hn::InterleaveUpper(u64, abLow, cdLow));
    c = hn::BitCast(u32, hn::InterleaveLower(u64, abHigh, cdHigh));
    d = hn::BitCast(u32, hn::InterleaveUpper(u64, abHigh, cdHigh));
}

/// A band on its way from the left to the right.
class Wavefront {
  public:
    HWY_INLINE explicit Wavefront(const Band& band)
        : band_(band),
          constants_{hn::BitCast(i32, hn::Set(f, kWhite[0])), hn::Set(i32, kShade),
                     hn::Set(f, band.threshold), hn::Set(i32, band.width)} {
        const Ints lanes = hn::Iota(i32, 0);
        for (std::ptrdiff_t k = 0; k < kVectors; ++k) {
            Lanes& r = rows_[k];
            const Ints row = hn::Add(hn::Mul(lanes, hn::Set(i32, kVectors)),
                                     hn::Set(i32, static_cast<std::int32_t>(k)));
            r.inner = hn::BitCast(
                i32, hn::VecFromMask(i32, hn::And(hn::Gt(row, hn::Set(i32, band.firstInner - 1)),
                                                  hn::Gt(hn::Set(i32, band.endInner), row))));
            r.carried1 = r.carried2 = r.carried3 = r.left = r.left2 = hn::Zero(f);
            r.leftShade = hn::Zero(i32);
            for (Ints& shade : r.shades) {
                shade = hn::Zero(i32);
            }
            r.levels = r.decided = hn::Zero(u32);
        }
        // What the row above has for row 0 before its first column.
        const float* e = band.errors;
        rows_[0].carried1 = first(e[0] * kBelow + e[1] * kBelowLeft);
        rows_[0].carried2 = first(e[0] * kBelowRight + e[1] * kBelow);
        rows_[0].carried3 = first(e[1] * kBelowRight);
        above2_ = first(e[2]);
        above1_ = first(e[3]);
    }

    HWY_INLINE void run() {
        const std::ptrdiff_t width = band_.width;
        const std::ptrdiff_t groups = (width - 1) / kDistance + kRows;
        // Groups in which every pixel has its neighbours.
        const bool hasInner = band_.firstInner == 0 && band_.endInner >= kRows;
        const std::ptrdiff_t innerBegin = kRows;
        const std::ptrdiff_t innerEnd = hasInner ? (width - 1) / kDistance : 0;
        for (std::ptrdiff_t g = 0; g < groups; g += 4) {
            turn(g, true);
            for (std::ptrdiff_t i = 0; i < 4; ++i) {
                const bool isInner = g + i >= innerBegin && g + i < innerEnd;
                if (isInner && isFaded(g + i, i)) {
                    passFaded(g + i, i);
                } else if (isInner) {
                    group<false>(g + i, i);
                } else {
                    group<true>(g + i, i);
                }
            }
            turn(g, false);
        }
    }

  private:
    static_assert(sizeof(float) == sizeof(std::int32_t));
    // White's levels are this far apart as integers that have a float's bits.
    static constexpr std::int32_t kShade = 2384757;

    static HWY_INLINE Floats first(float value) {
        HWY_ALIGN float lanes[kLanes] = {value};
        return hn::Load(f, lanes);
    }

    /// Between the pixels of four groups from `g` on and words_, which has for each group a word of
    /// each row.
    HWY_INLINE void turn(std::ptrdiff_t g, bool in) {
        const std::ptrdiff_t half = 4 * kVectors * (band_.stride - kDistance);
        for (std::ptrdiff_t k = 0; k < kVectors; ++k) {
            unsigned char* pixels = band_.pixels + kDistance * g + k * (band_.stride - kDistance);
            const std::ptrdiff_t lane = kVectors * (band_.stride - kDistance);
            Words* w = words_[k];
            if (in) {
                for (std::ptrdiff_t i = 0; i < 4; ++i) {
                    w[i] = loadRows(u32, pixels + i * lane, half);
                }
            }
            transpose(w[0], w[1], w[2], w[3]);
            if (!in) {
                for (std::ptrdiff_t i = 0; i < 4; ++i) {
                    storeRows(u32, w[i], pixels + i * lane, half);
                }
            }
        }
    }

    /// Whether in this group all is black and no error is above the smallest number there is. Such
    /// an error stays as it is from column to column, since kRight of it is rounded up to it, and
    /// all its other shares are rounded to 0. Some processors take a hundred times as long for
    /// these numbers, and they fill black areas as soon as one error has run into them.
    HWY_INLINE bool isFaded(std::ptrdiff_t g, std::ptrdiff_t i) const {
        Words levels = words_[0][i];
        for (std::ptrdiff_t k = 1; k < kVectors; ++k) {
            levels = hn::Or(levels, words_[k][i]);
        }
        if (!hn::AllTrue(u32, hn::Eq(levels, hn::Zero(u32))) || band_.threshold < 1.0F) {
            return false;
        }
        Floats errors = hn::Or(above1_, above2_);
        Floats carried = hn::Zero(f);
        for (const Lanes& r : rows_) {
            errors = hn::Or(errors, hn::Or(r.left, r.left2));
            carried = hn::Or(carried, hn::Or(r.carried1, hn::Or(r.carried2, r.carried3)));
        }
        for (std::ptrdiff_t c = 0; c < kDistance; ++c) {
            errors = hn::Or(errors, hn::Set(f, band_.errors[kDistance * (g + 1) + c]));
        }
        const Words errorBits = hn::BitCast(u32, hn::Abs(errors));
        const Words carriedBits = hn::BitCast(u32, hn::Abs(carried));
        // At most 1 with the sign away; carried shares are 0.
        const Words above = hn::Or(hn::AndNot(hn::Set(u32, 1U), errorBits), carriedBits);
        return hn::AllTrue(u32, hn::Eq(above, hn::Zero(u32)));
    }

    HWY_INLINE void passFaded(std::ptrdiff_t g, std::ptrdiff_t i) {
        for (std::ptrdiff_t k = 0; k < kVectors; ++k) {
            Lanes& r = rows_[k];
            r.left2 = r.left;
            r.leftShade = constants_.shade;
            r.shades[0] = r.shades[1] = r.shades[2] = r.shades[3] = constants_.shade;
            r.decided = words_[k][i] = hn::Zero(u32);
        }
        for (std::ptrdiff_t c = 0; c < kDistance; ++c) {
            passDown(kDistance * g + c);
        }
    }

    /// From the last row of the vectors to the first ones, and from and to the bands above and
    /// below.
    HWY_INLINE void passDown(std::ptrdiff_t t) {
        const Floats last = rotated(rows_[kVectors - 1].left);
        above2_ = above1_;
        above1_ = hn::IfThenElse(hn::RebindMask(f, firstLane()),
                                 hn::Set(f, band_.errors[t + kDistance]), last);
        band_.errors[t - kDistance * (kRows - 1)] = hn::GetLane(last);
    }

    template <bool kEdges>
    HWY_INLINE void group(std::ptrdiff_t g, std::ptrdiff_t i) {
        std::uint32_t aboveFirst;
        std::memcpy(&aboveFirst, band_.pixels - band_.stride + kDistance * g, sizeof aboveFirst);
        const Words above = hn::IfThenElse(firstLane(), hn::Set(u32, aboveFirst),
                                           rotated(rows_[kVectors - 1].decided));
        for (std::ptrdiff_t k = 0; k < kVectors; ++k) {
            rows_[k].levels = words_[k][i];
        }
        const Ints black = hn::Not(hn::BitCast(i32, above));
        column<kEdges, 0>(g, hn::ShiftLeft<24>(black));
        column<kEdges, 1>(g, hn::ShiftLeft<16>(black));
        column<kEdges, 2>(g, hn::ShiftLeft<8>(black));
        column<kEdges, 3>(g, black);
        for (std::ptrdiff_t k = 0; k < kVectors; ++k) {
            words_[k][i] = rows_[k].decided;
        }
    }

    template <bool kEdges, int kColumn>
    HWY_INLINE void column(std::ptrdiff_t g, Ints aboveIsBlack) {
        const std::ptrdiff_t t = kDistance * g + kColumn;
        Ints columns = hn::Zero(i32);
        // From the last vector on: each takes from the one before what that had a group ago.
#pragma GCC unroll 8
        for (std::ptrdiff_t k = kVectors - 1; k > 0; --k) {
            if constexpr (kEdges) {
                columns = columnsOf(t, k);
            }
            step<kEdges, kColumn>(rows_[k], constants_, rows_[k - 1].left2,
                                  rows_[k - 1].shades[kColumn], columns);
        }
        if constexpr (kEdges) {
            columns = columnsOf(t, 0);
        }
        const Ints shade = hn::And(hn::ShiftRight<31>(aboveIsBlack), constants_.shade);
        step<kEdges, kColumn>(rows_[0], constants_, above2_, shade, columns);
        passDown(t);
    }

    static HWY_INLINE Ints columnsOf(std::ptrdiff_t t, std::ptrdiff_t k) {
        const Ints lane = hn::Iota(i32, 0);
        return hn::Sub(hn::Set(i32, static_cast<std::int32_t>(t - kDistance * k)),
                       hn::Mul(lane, hn::Set(i32, kDistance * kVectors)));
    }

    static HWY_INLINE hn::Mask<U> firstLane() {
        return hn::FirstN(u32, 1);
    }

    /// Every lane to the next one, the last one to the first.
    template <class V>
    static HWY_INLINE V rotated(V v) {
        const hn::DFromV<V> d;
        HWY_ALIGN std::int32_t from[kLanes];
        for (std::ptrdiff_t lane = 0; lane < kLanes; ++lane) {
            from[lane] = static_cast<std::int32_t>((lane + kLanes - 1) % kLanes);
        }
        return hn::TableLookupLanes(v, hn::SetTableIndices(d, from));
    }

    const Band band_;
    const Constants constants_;
    Lanes rows_[kVectors];
    Words words_[kVectors][4];
    Floats above1_, above2_;  ///< for the first vector: errors of the rows above, of the last steps
};

void run(const Band& band) {
    Wavefront(band).run();
}

#endif

}  // namespace diffusion::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace diffusion {

HWY_EXPORT(rowCount);
HWY_EXPORT(run);

std::ptrdiff_t bandRows() {
    return HWY_DYNAMIC_DISPATCH(rowCount)();
}

void diffuseBand(const Band& band) {
    HWY_DYNAMIC_DISPATCH(run)(band);
}

}  // namespace diffusion
#endif
