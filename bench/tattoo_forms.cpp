// The stages of the tattoo chain in every form, beside the literal reference, on an A4 stencil:
//
//   kelp_bench_tattoo_forms --benchmark_enable_random_interleaving --benchmark_repetitions=9
//
// Compare forms within one run only.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/test_page.h"
#include "enhance/error_diffusion.h"
#include "enhance/gaussian.h"
#include "enhance/moments_threshold.h"
#include "enhance/piecewise_gamma.h"
#include "enhance/tattoo.h"
#include "simd/forms.h"
#include "tests/reference/gaussian.h"
#include "tests/reference/moments.h"
#include "tests/reference/tattoo.h"

namespace {

constexpr std::uint32_t kWidth = 1664;
constexpr std::uint32_t kHeight = 2496;

/// A page as people print them, and one that is nearly black: there errors shrink to the smallest
/// numbers that there are, which slow some processors.
const TestPage& mixedPage() {
    static const TestPage page = makeTestPage(kWidth, kHeight);
    return page;
}

const TestPage& darkPage() {
    static const TestPage page = [] {
        TestPage dark{kWidth, kHeight, std::vector<unsigned char>(std::size_t{kWidth} * kHeight)};
        for (std::size_t y = 0; y < kHeight; ++y) {
            for (std::size_t x = 0; x < 8; ++x) {
                dark.pixels[y * kWidth + x] = static_cast<unsigned char>(200 - 20 * x + y % 20);
            }
        }
        return dark;
    }();
    return page;
}

void report(benchmark::State& state) {
    const double pixels = double{kWidth} * kHeight * static_cast<double>(state.iterations());
    using Counter = benchmark::Counter;
    state.counters["s/pixel"] = Counter(pixels, Counter::kIsRate | Counter::kInvert);
}

template <typename Literal>
void addLiteral(const std::string& stage, const TestPage& (*page)(), Literal literal) {
    benchmark::RegisterBenchmark((stage + "/literal").c_str(), [=](benchmark::State& state) {
        const reference::GrayImage grey{kWidth, kHeight, page().pixels};
        for (auto _ : state) {
            auto result = literal(grey);
            benchmark::DoNotOptimize(result);
        }
        report(state);
    })->Unit(benchmark::kMillisecond);
}

template <typename Stage>
void addForms(const std::string& stage, const TestPage& (*page)(), Stage run) {
    for (const simd::Form& form : simd::forms()) {
        benchmark::RegisterBenchmark((stage + "/" + form.name).c_str(), [=](benchmark::State&
                                                                                state) {
            const simd::ForcedForm forced(form);
            TQImage grey(kWidth, kHeight, TQ_IMG_GRAY, page().pixels.data());
            for (auto _ : state) {
                auto result = run(grey);
                benchmark::DoNotOptimize(result);
            }
            report(state);
        })->Unit(benchmark::kMillisecond);
    }
}

}  // namespace

int main(int argc, char** argv) {
    using reference::GrayImage;
    addLiteral("moments threshold", mixedPage, reference::thresholdGlobalMoments);
    addForms("moments threshold", mixedPage,
             [](TQImage& grey) { return thresh_global_moments(grey); });
    addForms("tone curve", mixedPage, [](TQImage& grey) {
        static const ToneCurve curve = piecewiseGammaTable(64, 0.85F, 0.7F);
        const std::size_t width = kWidth;
        static unsigned char row[kWidth];
        for (std::size_t y = 0; y < kHeight; ++y) {
            applyToneCurve(curve, grey.data + y * width, width, row);
        }
        return row[0];
    });
    addLiteral("unsharp mask 11", mixedPage,
               [](const GrayImage& grey) { return reference::unsharpMask(grey, 300.0F, 11); });
    addForms("unsharp mask 11", mixedPage,
             [](TQImage& grey) { return enh_unsharp_mask(grey, 300.0F, 11); });
    addLiteral("edf_cus", mixedPage,
               [](const GrayImage& grey) { return reference::edfCus(grey, 128); });
    addForms("edf_cus", mixedPage, [](TQImage& grey) { return edf_cus(grey, 128); });
    addLiteral("edf_cus, dark page", darkPage,
               [](const GrayImage& grey) { return reference::edfCus(grey, 128); });
    addForms("edf_cus, dark page", darkPage, [](TQImage& grey) { return edf_cus(grey, 128); });
    addLiteral("tattoo chain", mixedPage,
               [](const GrayImage& grey) { return reference::tattooDithering(grey); });
    addForms("tattoo chain", mixedPage, [](TQImage& grey) { return tqTattooDithering(grey); });
    addForms("tattoo X8 chain", mixedPage, [](TQImage& grey) { return tqTattooDitheringX8(grey); });
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
