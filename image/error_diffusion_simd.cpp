// Error diffusion with one row in each lane of a vector.
//
// A pixel depends on those to its left and on a few of the rows above, so a row can follow the one
// above it at a distance of kLag columns. A band of as many rows as a vector has lanes runs side by
// side: in step t, row r of the band is at column t - r * kLag. What a band gives to the first rows
// of the next one is added to those before they run, so that every pixel still receives its terms
// in the order in which its neighbours are scanned: as each addition clamps, that order is the
// result.

#include "image/error_diffusion_simd.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "image/diffusion_kernels.h"
#include "image/diffusion_streams.h"

// The file is compiled once for each target.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "image/error_diffusion_simd.cpp"
#include <hwy/foreach_target.h>  // keep it before highway.h
//
#include <hwy/highway.h>

#include "image/diffusion_vectors.h"

HWY_BEFORE_NAMESPACE();
namespace diffusion::HWY_NAMESPACE {

#if !KELP_DIFFUSION_HAS_VECTORS

void diffuse(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots) {
    diffuseErrorsPlainly(kernel, page, dots);
}

#else

constexpr std::size_t kRows = kLanes;
constexpr std::size_t kLargestLag = (kRows - 1) * kLag;
// Steps that are loaded together. Terms are kept for as many.
constexpr std::size_t kSteps = 16;
static_assert(kRowsBelow * kLag + kReach < kSteps);
// Steps whose dots fill a byte, compiled as one piece.
constexpr std::size_t kPiece = 8;

// Lane 0 holds the lowest row of a band.
constexpr std::size_t lagOf(std::size_t lane) {
    return (kRows - 1 - lane) * kLag;
}

template <const auto& kernel>
class Bands {
  public:
    Bands(const GreyPage& page, const MonoPage& dots)
        : page_(page),
          dots_(dots),
          // Until the lowest row is through, and what a tap reads past its end.
          steps_((page.width + kLargestLag + kReach + kSteps - 1) / kSteps * kSteps),
          firstRows_(kRowsBelow * firstRowSize()),
          lastRows_(kRowsBelow * lastRowSize()),
          lastPixels_(4 * lastRowSize()),
          shares_(kShareCount * shareSize()),
          dotColumns_(dotRowSize() * kLanes),
          dotRows_(kRows * dotRowSize()) {}

    void run() {
        for (std::size_t top = 0; top < page_.height; top += kRows) {
            takeRows(top);
            if (top > 0) {
                addTermsFromAbove();
            }
            runBand();
            packDots(top);
        }
    }

  private:
    static constexpr auto& kTaps = kernel.taps;
    using AllTaps = std::make_index_sequence<kTaps.size()>;
    static constexpr Streams<kTaps.size()> kStreams{kernel};
    static constexpr std::size_t kShareCount = kWeights<kernel>.count;
    // Columns on both sides of a copied row that a chunk may reach.
    static constexpr std::size_t kPad = kLargestLag + kSteps;

    std::size_t firstRowSize() const { return page_.width + 2 * kPad + kLanes; }
    std::size_t lastRowSize() const { return steps_ + kLanes; }
    std::size_t shareSize() const { return page_.width + 2 * kReach + 2 * kLanes; }
    // A whole number of transposed blocks, and a vector to read past the end.
    std::size_t dotRowSize() const { return (steps_ / 8 + 15) / 16 * 16 + kLanes + 1; }

    std::uint8_t* firstRow(std::size_t row) { return &firstRows_[row * firstRowSize() + kPad]; }

    // The first rows of a band are copied: they change before it runs. Rows below the page are
    // like its last one; no pixel of the page receives anything from them.
    void takeRows(std::size_t top) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const std::size_t row = std::min(top + kRows - 1 - lane, page_.height - 1);
            rows_[lane] = page_.first + row * page_.stride;
        }
        copied_ = top == 0 ? 0 : std::min(kRowsBelow, page_.height - top);
        for (std::size_t row = 0; row < copied_; ++row) {
            std::copy_n(rows_[kLanes - 1 - row], page_.width, firstRow(row));
            rows_[kLanes - 1 - row] = firstRow(row);
        }
    }

    void addTermsFromAbove() {
        std::uint8_t* rows = lastRows_.data();
        for (std::size_t step = 0; step < steps_; step += kLanes) {
            V lowest, second, third, unused;
            hn::LoadInterleaved4(D(), &lastPixels_[4 * step], lowest, second, third, unused);
            hn::StoreU(lowest, D(), rows + step);
            hn::StoreU(second, D(), rows + step + lastRowSize());
            hn::StoreU(third, D(), rows + step + 2 * lastRowSize());
        }
        for (std::size_t lane = kRowsBelow; lane-- > 0;) {
            const std::uint8_t* greys = rows + lane * lastRowSize() + lagOf(lane) - kReach;
            for (std::size_t x = 0; x < page_.width + 2 * kReach; x += kLanes) {
                const Shares<kernel> shares(Pixels(hn::LoadU(D(), greys + x)));
                for (std::size_t i = 0; i < kShareCount; ++i) {
                    hn::StoreU(shares.of[i], D(), &shares_[i * shareSize() + x]);
                }
            }
            for (std::size_t row = 0; row < copied_; ++row) {
                addTerms(firstRow(row), static_cast<int>(row + lane + 1), AllTaps());
            }
        }
    }

    // Adds what a row gives to the one dy below it; the taps backwards are the order of scanning.
    template <std::size_t... I>
    HWY_INLINE void addTerms(std::uint8_t* cells, int dy, std::index_sequence<I...>) {
        for (std::size_t x = 0; x < page_.width; x += kLanes) {
            V grey = hn::Xor(hn::LoadU(D(), cells + x), all(0x80));
            (addTerm<kTaps.size() - 1 - I>(grey, x, dy), ...);
            hn::StoreU(hn::Xor(grey, all(0x80)), D(), cells + x);
        }
    }

    template <std::size_t tap>
    HWY_INLINE void addTerm(V& grey, std::size_t x, int dy) {
        constexpr std::size_t share = kWeights<kernel>.indexOf(kTaps[tap].weight);
        if (kTaps[tap].dy == dy) {
            const std::uint8_t* terms = &shares_[share * shareSize() + kReach];
            grey = addClamped(
                grey, hn::LoadU(D(), terms + static_cast<std::ptrdiff_t>(x) - kTaps[tap].dx));
        }
    }

    // What goes on from step to step.
    struct State {
        HWY_INLINE State(std::uint8_t* terms, std::uint8_t* otherTerms, std::uint8_t* pixels)
            : dots(all(0)), streams{terms, otherTerms}, lastPixels(pixels) {
            for (auto& last : recent) {
                last[0] = last[1] = all(0);
            }
        }
        V dots;
        V recent[kStreams.count][kRecent];
        std::uint8_t* streams[2];  // the half of terms_ in hand, and the other
        std::uint8_t* lastPixels;
    };

    void runBand() {
        std::memset(terms_, 0, sizeof terms_);
        State state(terms_, terms_ + sizeof terms_ / 2, lastPixels_.data());
        for (std::size_t step = 0; step < steps_; step += kSteps) {
            if (step >= kLargestLag && step + kSteps <= page_.width) {
                loadTransposed<kLag>(rows_, static_cast<std::ptrdiff_t>(step), greys_);
                runSteps<false>(step, state);
            } else {
                loadAtEdge(step);
                markOutside(step);
                runSteps<true>(step, state);
            }
        }
    }

    void loadAtEdge(std::size_t step) {
        std::uint8_t spare[kLanes][kSteps];
        const std::uint8_t* chunks[kLanes];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            chunks[lane] = chunkAtEdge(lane, step, spare[lane]);
        }
        loadTransposed<0>(chunks, 0, greys_);
    }

    // The bytes before and behind a row are read where there are any; they count for nothing.
    const std::uint8_t* chunkAtEdge(std::size_t lane, std::size_t step, std::uint8_t* spare) const {
        constexpr auto size = static_cast<std::ptrdiff_t>(kSteps);
        const auto x = static_cast<std::ptrdiff_t>(step) - static_cast<std::ptrdiff_t>(lagOf(lane));
        if (lane >= kLanes - copied_) {
            return rows_[lane] + std::min(x, static_cast<std::ptrdiff_t>(page_.width));
        }
        const std::ptrdiff_t first = rows_[lane] - page_.first + x;
        const auto end =
            static_cast<std::ptrdiff_t>((page_.height - 1) * page_.stride + page_.width);
        if (first >= 0 && first + size <= end) {
            return page_.first + first;
        }
        for (std::ptrdiff_t i = 0; i < size; ++i) {
            spare[i] = first + i >= 0 && first + i < end ? page_.first[first + i] : 0;
        }
        return spare;
    }

    // Outside of the page a lane holds 255, a white without error.
    void markOutside(std::size_t step) {
        static_assert(kLargestLag < 127);
        const auto clamped = [](std::ptrdiff_t lag) {
            return static_cast<std::int8_t>(std::clamp<std::ptrdiff_t>(lag, -1, 127));
        };
        HWY_ALIGN std::int8_t lags[kLanes];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            lags[lane] = static_cast<std::int8_t>(lagOf(lane));
        }
        const auto lag = hn::Load(DSigned(), lags);
        for (std::size_t i = 0; i < kSteps; ++i) {
            const auto t = static_cast<std::ptrdiff_t>(step + i);
            const auto width = static_cast<std::ptrdiff_t>(page_.width);
            const auto begun = hn::Not(hn::Gt(lag, hn::Set(DSigned(), clamped(t))));
            const auto unfinished = hn::Gt(lag, hn::Set(DSigned(), clamped(t - width)));
            const V outside =
                hn::BitCast(D(), hn::Not(hn::VecFromMask(DSigned(), hn::And(begun, unfinished))));
            hn::Store(outside, D(), outside_ + i * kLanes);
        }
    }

    template <bool atEdge>
    HWY_INLINE void runSteps(std::size_t step, State& state) {
        for (std::size_t piece = 0; piece < kSteps; piece += kPiece) {
            runPiece<atEdge>(piece, state, std::make_index_sequence<kPiece>());
            hn::StoreU(state.dots, D(), &dotColumns_[(step + piece) / 8 * kLanes]);
            state.lastPixels += 4 * kPiece;
            std::swap(state.streams[0], state.streams[1]);
        }
    }

    template <bool atEdge, std::size_t... I>
    HWY_INLINE void runPiece(std::size_t piece, State& state, std::index_sequence<I...>) {
        (runStep<atEdge, I>(piece, state), ...);
    }

    template <bool atEdge, std::size_t i>
    HWY_INLINE void runStep(std::size_t piece, State& state) {
        const std::size_t at = (piece + i) * kLanes;
        V grey = hn::Load(D(), greys_ + at);
        receive<i>(grey, state, AllTaps());
        if constexpr (atEdge) {
            const V outside = hn::Load(D(), outside_ + at);
            grey = hn::Or(hn::AndNot(outside, grey), hn::And(outside, all(127)));
        }
        const Pixels pixels(grey);
        give<i>(Shares<kernel>(pixels), state, std::make_index_sequence<kStreams.count>());
        state.dots = hn::Sub(hn::Add(state.dots, state.dots), pixels.white);
        const std::uint32_t lowest =
            hn::GetLane(hn::BitCast(hn::Repartition<std::uint32_t, D>(), grey));
        std::memcpy(state.lastPixels + 4 * i, &lowest, sizeof lowest);
    }

    // Where a stream has what was given in step i of the piece in hand.
    static constexpr std::size_t placeOf(std::size_t stream, std::size_t i) {
        return (stream * kPiece + i) * kLanes;
    }

    template <std::size_t i, std::size_t... I>
    HWY_INLINE void receive(V& grey, const State& state, std::index_sequence<I...>) {
        (receiveFrom<i, kTaps.size() - 1 - I>(grey, state), ...);
    }

    template <std::size_t i, std::size_t tap>
    HWY_INLINE void receiveFrom(V& grey, const State& state) {
        constexpr std::size_t stream = kStreams.indexOf(kTaps[tap]);
        constexpr std::size_t delay = delayOf(kTaps[tap]);
        if constexpr (delay <= kRecent) {
            grey = addClamped(grey, state.recent[stream][delay - 1]);
        } else {
            constexpr std::size_t given = i + kSteps - delay;
            const std::uint8_t* half = state.streams[given / kPiece % 2];
            grey = addClamped(grey, hn::Load(D(), half + placeOf(stream, given % kPiece)));
        }
    }

    template <std::size_t i, std::size_t... I>
    HWY_INLINE void give(const Shares<kernel>& shares, State& state, std::index_sequence<I...>) {
        (giveTo<i, I>(shares, state), ...);
    }

    template <std::size_t i, std::size_t stream>
    HWY_INLINE void giveTo(const Shares<kernel>& shares, State& state) {
        constexpr auto to = kStreams.list[stream];
        const V terms = rowsDown<to.dy>(shares.of[kWeights<kernel>.indexOf(to.weight)]);
        state.recent[stream][1] = state.recent[stream][0];
        state.recent[stream][0] = terms;
        if constexpr (to.inMemory) {
            hn::Store(terms, D(), state.streams[0] + placeOf(stream, i));
        }
    }

    // The dots of a row come its lag late: that many bits of its first bytes are not its own.
    void packDots(std::size_t top) {
        static_assert(kLag == 4, "a lag is a number of bytes, or of bytes and half a one");
        for (std::size_t i = 0; i < steps_ / 8; i += 16) {
            storeTransposed(&dotColumns_[i * kLanes], &dotRows_[i], dotRowSize());
        }
        const std::size_t bytes = (page_.width + 7) / 8;
        const std::size_t rows = std::min(kRows, page_.height - top);
        for (std::size_t row = 0; row < rows; ++row) {
            const std::size_t lane = kRows - 1 - row;
            std::uint8_t* dots = &dotRows_[lane * dotRowSize() + lagOf(lane) / 8];
            if (lagOf(lane) % 8 != 0) {
                for (std::size_t i = 0; i < bytes; i += kLanes) {
                    const V early = hn::ShiftLeft<4>(hn::LoadU(D(), dots + i));
                    const V late = hn::ShiftRight<4>(hn::LoadU(D(), dots + i + 1));
                    hn::StoreU(hn::Or(early, late), D(), dots + i);
                }
            }
            if (page_.width % 8 != 0) {
                dots[bytes - 1] =
                    static_cast<std::uint8_t>(dots[bytes - 1] & 0xFF00 >> page_.width % 8);
            }
            std::copy_n(dots, bytes, dots_.first + (top + row) * dots_.stride);
        }
    }

    GreyPage page_;
    MonoPage dots_;
    std::size_t steps_;
    std::vector<std::uint8_t> firstRows_;
    std::vector<std::uint8_t> lastRows_;    // of the band above, each its lag late
    std::vector<std::uint8_t> lastPixels_;  // the same, lanes 0 to 3 of each step
    std::vector<std::uint8_t> shares_;
    std::vector<std::uint8_t> dotColumns_;  // a vector for every eight steps
    std::vector<std::uint8_t> dotRows_;
    const std::uint8_t* rows_[kLanes];
    std::size_t copied_ = 0;
    HWY_ALIGN std::uint8_t greys_[kSteps * kLanes];
    HWY_ALIGN std::uint8_t outside_[kSteps * kLanes];
    HWY_ALIGN std::uint8_t terms_[kStreams.count * kSteps * kLanes];
};

void diffuse(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots) {
    switch (kernel) {
        case ErrorKernel::FloydSteinberg:
            return Bands<kFloydSteinberg>(page, dots).run();
        case ErrorKernel::Burkes:
            return Bands<kBurkes>(page, dots).run();
        case ErrorKernel::Stucki:
            return Bands<kStucki>(page, dots).run();
        case ErrorKernel::JarvisJudiceNinke:
            return Bands<kJarvisJudiceNinke>(page, dots).run();
        case ErrorKernel::Sierra:
            return Bands<kSierra>(page, dots).run();
        case ErrorKernel::StevensonArce:
            return Bands<kStevensonArce>(page, dots).run();
    }
}

#endif

}  // namespace diffusion::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace diffusion {

HWY_EXPORT(diffuse);

void diffuseInVectors(ErrorKernel kernel, const GreyPage& page, const MonoPage& dots) {
    HWY_DYNAMIC_DISPATCH(diffuse)(kernel, page, dots);
}

}  // namespace diffusion
#endif
