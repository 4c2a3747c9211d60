// Every error-diffusion kernel in every form that the machine has. The forms take turns within one
// run, so that a ratio of their medians means something on a busy machine; for it, run with
// --benchmark_repetitions=9 --benchmark_enable_random_interleaving=true
// --benchmark_report_aggregates_only=true

#include "image/error_diffusion.h"

#include <benchmark/benchmark.h>

#include <string>

#include "bench/test_page.h"
#include "simd/forms.h"

namespace {

struct Size {
    const char* name;
    std::uint32_t width;
    std::uint32_t height;
};
constexpr Size kSizes[] = {{"label", 812, 1218}, {"stencil", 1664, 2496}};

struct Named {
    const char* name;
    ErrorKernel kernel;
};
constexpr Named kKernels[] = {{"Floyd-Steinberg", ErrorKernel::FloydSteinberg},
                              {"Burkes", ErrorKernel::Burkes},
                              {"Stucki", ErrorKernel::Stucki},
                              {"Jarvis-Judice-Ninke", ErrorKernel::JarvisJudiceNinke},
                              {"Sierra", ErrorKernel::Sierra},
                              {"Stevenson-Arce", ErrorKernel::StevensonArce}};

void halftone(benchmark::State& state, ErrorKernel kernel, const Size& size,
              const simd::Form& form) {
    const simd::ForcedForm forced(form);
    const TestPage page = makeTestPage(size.width, size.height);
    const std::size_t stride = (size.width + 7) / 8;
    std::vector<std::uint8_t> dots(stride * size.height);
    for (auto _ : state) {
        diffuseErrors(kernel, {page.pixels.data(), page.width, page.width, page.height},
                      {dots.data(), stride});
        benchmark::DoNotOptimize(dots.data());
        benchmark::ClobberMemory();
    }
    const auto pixels = static_cast<double>(page.pixels.size());
    state.counters["pixel/s"] = benchmark::Counter(pixels * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate);
}

}  // namespace

int main(int argc, char** argv) {
    for (const Named& kernel : kKernels) {
        for (const Size& size : kSizes) {
            for (const simd::Form& form : simd::forms()) {
                benchmark::RegisterBenchmark(
                    (std::string(kernel.name) + "/" + size.name + "/" + form.name).c_str(),
                    [=](benchmark::State& state) { halftone(state, kernel.kernel, size, form); })
                    ->Unit(benchmark::kMillisecond);
            }
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
