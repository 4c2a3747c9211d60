// Runs one stage in one form, for whoever counts instructions or compares with other programs.
//
//   kelp_bench_one_stage                              the names of the stages and their forms
//   kelp_bench_one_stage STAGE FORM PAGE ROWS RUNS    runs it over a page of so many rows, 0 for
//                                                     the usual, and prints the median of the
//                                                     processor times in ns
//
// The form may be "literal", the loops of tests/reference, or "best". The instructions of a run are
// the difference between two counts of runs.

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/stages.h"
#include "simd/forms.h"

namespace {

void list(const Stage& stage) {
    std::printf("%s:", stage.name.c_str());
    if (stage.literal) {
        std::printf(" literal");
    }
    for (const simd::Form& form : simd::forms()) {
        std::printf(" %s", form.name);
        if (!stage.hasForms) {
            break;
        }
    }
    std::printf("\n");
}

template <typename List>
const auto& named(const List& list, const std::string& name) {
    for (const auto& each : list) {
        if (each.name == name) {
            return each;
        }
    }
    std::fprintf(stderr, "there is no %s\n", name.c_str());
    std::exit(1);
}

/// The processor's time: of a busy machine's time others take a part.
double nowInNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

double medianTime(const std::function<void()>& run, int runs) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const double start = nowInNanoseconds();
        run();
        times.push_back(nowInNanoseconds() - start);
    }
    std::sort(times.begin(), times.end());
    return times.empty() ? 0.0 : times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<Stage> all = stages();
    if (argc != 6) {
        for (const Stage& stage : all) {
            list(stage);
        }
        return argc == 1 ? 0 : 1;
    }
    const Stage& stage = named(all, argv[1]);
    const std::string form = argv[2];
    const KnownPage& known = named(kPages, argv[3]);
    const auto rows = static_cast<std::uint32_t>(std::strtoul(argv[4], nullptr, 10));
    const TestPage page = known.make(known.width, rows > 0 ? rows : known.height);
    const int runs = std::atoi(argv[5]);

    if (form == "literal") {
        std::printf("%.0f\n", medianTime(stage.literal(page), runs));
        return 0;
    }
    const std::vector<simd::Form> forms = simd::forms();
    const simd::ForcedForm forced(form == "best" ? forms.back() : named(forms, form));
    std::printf("%.0f\n", medianTime(stage.run(page), runs));
    return 0;
}
