// How fast a printer stream becomes dots in memory: labels as the filter prints them, by halftone.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "bench/test_page.h"
#include "preview/stream_decoder.h"
#include "tools/kelp-preview/sheet/halftone_print.h"

namespace {

std::string printed(const Halftone& halftone) {
    const TestPage page = makeTestPage(1660, 2496);
    return printStream({page.width, page.height, page.pixels}, halftone, {});
}

void decode(benchmark::State& state) {
    const Halftone& halftone = kHalftones[static_cast<std::size_t>(state.range(0))];
    const std::string stream = printed(halftone);
    std::uint64_t dots = 0;
    for (auto _ : state) {
        std::stringbuf buffer(stream, std::ios::in);
        kelp_preview::StreamDecoder decoder(buffer, {});
        const auto label = decoder.next();
        if (!label) {
            state.SkipWithError("no label");
            break;
        }
        dots += label->dots->width * label->dots->height;
        benchmark::DoNotOptimize(label->dots->bytes.data());
    }
    state.SetLabel(halftone.optionName());
    state.counters["Mdot/s"] =
        benchmark::Counter(static_cast<double>(dots) / 1e6, benchmark::Counter::kIsRate);
    state.counters["MB stream"] = static_cast<double>(stream.size()) / 1e6;
}

BENCHMARK(decode)->DenseRange(0, static_cast<int>(kHalftones.size()) - 1);

}  // namespace

BENCHMARK_MAIN();
