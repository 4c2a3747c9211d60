#ifndef KELP_BENCH_STAGES_H
#define KELP_BENCH_STAGES_H

#include <functional>
#include <string>
#include <vector>

#include "bench/test_page.h"

/// One stage of a page's road.
struct Stage {
    /// Makes everything ready, and gives what runs the stage over the page once.
    using Prepare = std::function<std::function<void()>(const TestPage& page)>;

    std::string name;
    Prepare run;
    Prepare literal;  ///< the loops of tests/reference; empty where there are none
    bool hasForms;    ///< whether it is more than plain C++
};

std::vector<Stage> stages();

#endif
