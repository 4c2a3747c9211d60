// Every stage of a page's road in every form, beside the literal loops of tests/reference, on each
// page. All take turns within one run, so that ratios mean something on a busy machine.
//
//   kelp_bench_stages                                 the tables: medians of 9, some minutes
//   kelp_bench_stages --benchmark_filter=label/       some of it; other options of Google
//                                                     Benchmark work as well

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "bench/stages.h"
#include "bench/test_page.h"
#include "simd/forms.h"

namespace {

constexpr const char* kLiteral = "literal";

std::string nameOf(const KnownPage& page, const Stage& stage, const std::string& form) {
    return std::string(page.name) + "/" + stage.name + "/" + form;
}

/// What is special about the dark page concerns one stage.
bool concerns(const KnownPage& page, const Stage& stage) {
    return std::string(page.name) != "dark" || stage.name == "edf_cus";
}

void measure(benchmark::State& state, const KnownPage& known, const Stage::Prepare& prepare) {
    const TestPage page = known.page();
    const std::function<void()> run = prepare(page);
    run();  // the first one touches new memory
    for (auto _ : state) {
        run();
        benchmark::ClobberMemory();
    }
}

constexpr const char* kClock = "clock";
constexpr std::uint64_t kClockSteps = 100000;

/// A multiplication and an addition that wait for each other: what ns are worth on this machine at
/// this time.
void runClock(benchmark::State& state) {
    for (auto _ : state) {
        std::uint64_t value = 1;
        for (std::uint64_t i = 0; i < kClockSteps; ++i) {
            value = value * 6364136223846793005U + 1442695040888963407U;
        }
        benchmark::DoNotOptimize(value);
    }
}

void add(const KnownPage& page, const Stage& stage) {
    if (stage.literal) {
        benchmark::RegisterBenchmark(
            nameOf(page, stage, kLiteral).c_str(),
            [&page, &stage](benchmark::State& state) { measure(state, page, stage.literal); });
    }
    for (const simd::Form& form : simd::forms()) {
        benchmark::RegisterBenchmark(nameOf(page, stage, form.name).c_str(),
                                     [&page, &stage, form](benchmark::State& state) {
                                         const simd::ForcedForm forced(form);
                                         measure(state, page, stage.run);
                                     });
        if (!stage.hasForms) {
            break;
        }
    }
}

/// Keeps the medians.
class Medians : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
                nanoseconds_[run.run_name.function_name] = run.GetAdjustedCPUTime();
            }
        }
    }

    /// In nanoseconds a page; 0 for what was not measured.
    double of(const std::string& name) const {
        const auto found = nanoseconds_.find(name);
        return found == nanoseconds_.end() ? 0.0 : found->second;
    }

    bool has(const KnownPage& page) const {
        return std::any_of(nanoseconds_.begin(), nanoseconds_.end(), [&page](const auto& entry) {
            return entry.first.starts_with(std::string(page.name) + "/");
        });
    }

  private:
    std::map<std::string, double> nanoseconds_;
};

void printNumber(double value) {
    if (value > 0.0) {
        std::printf(" %8.*f", value < 10.0 ? 3 : (value < 100.0 ? 2 : 1), value);
    } else {
        std::printf(" %8s", "-");
    }
}

void printRatio(double from, double to) {
    if (from > 0.0 && to > 0.0) {
        std::printf(" %8.1f", from / to);
    } else {
        std::printf(" %8s", "-");
    }
}

/// Times a pixel, then how many times as fast a form is as the plain one and as the literal loops.
/// What was not asked for is left out.
void printTable(const KnownPage& page, const std::vector<Stage>& all, const Medians& medians) {
    const std::vector<simd::Form> forms = simd::forms();
    const auto wide = [](std::size_t columns) { return static_cast<int>(9 * columns); };
    std::printf("\n%-20s%-*s%-*s%s\n%4u x %-13u %8s", page.name, wide(forms.size() + 1),
                "  ns a pixel", wide(forms.size() - 1), "  times plain", "  times literal",
                page.width, page.height, kLiteral);
    for (const simd::Form& form : forms) {
        std::printf(" %8s", form.name);
    }
    for (std::size_t i = 1; i < forms.size(); ++i) {
        std::printf(" %8s", forms[i].name);
    }
    for (const simd::Form& form : forms) {
        std::printf(" %8s", form.name);
    }
    std::printf("\n");
    const double pixels = double{1.0} * page.width * page.height;
    for (const Stage& stage : all) {
        const double literal = medians.of(nameOf(page, stage, kLiteral));
        std::vector<double> times;
        for (const simd::Form& form : forms) {
            times.push_back(medians.of(nameOf(page, stage, form.name)));
        }
        if (times[0] <= 0.0 && times.back() <= 0.0) {
            continue;
        }
        std::printf("%-20s", stage.name.c_str());
        printNumber(literal / pixels);
        for (const double time : times) {
            printNumber(time / pixels);
        }
        for (std::size_t i = 1; i < times.size(); ++i) {
            printRatio(times[0], times[i]);
        }
        for (const double time : times) {
            printRatio(literal, time);
        }
        std::printf("\n");
    }
}

}  // namespace

int main(int argc, char** argv) {
    // What is given counts more: it comes later.
    std::vector<std::string> arguments = {argv[0], "--benchmark_repetitions=9",
                                          "--benchmark_enable_random_interleaving=true",
                                          "--benchmark_min_time=0.02"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    auto count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) {
        return 1;
    }
    benchmark::RegisterBenchmark(kClock, runClock);
    const std::vector<Stage> all = stages();
    for (const KnownPage& page : kPages) {
        for (const Stage& stage : all) {
            if (concerns(page, stage)) {
                add(page, stage);
            }
        }
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    if (medians.of(kClock) > 0.0) {
        std::printf(
            "A multiplication and an addition after one another: %.2f ns (4 cycles of most "
            "x86-64)\n",
            medians.of(kClock) / kClockSteps);
    }
    for (const KnownPage& page : kPages) {
        if (medians.has(page)) {
            printTable(page, all, medians);
        }
    }
    return 0;
}
